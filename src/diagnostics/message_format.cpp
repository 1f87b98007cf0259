#include "diagnostics/message_format.h"

#include <charconv>
#include <cstddef>
#include <string_view>

namespace dozewell {
namespace {

// Enough for a sign and the digits of any 32-bit number.
using DigitBuffer = std::array<char, 11>;

// The argument as the conversion's letter wants it; empty when the letter is no conversion.
std::string_view Convert(wchar_t letter, uint32_t argument, DigitBuffer& digits) {
  char* const begin = digits.data();
  char* const limit = begin + digits.size();
  char* end = begin;
  switch (letter) {
    case L'd':
    case L'i':
      end = std::to_chars(begin, limit, static_cast<int32_t>(argument)).ptr;
      break;
    case L'u':
      end = std::to_chars(begin, limit, argument).ptr;
      break;
    case L'x':
    case L'X':
      end = std::to_chars(begin, limit, argument, 16).ptr;
      break;
    default:
      break;
  }
  if (letter == L'X') {
    for (char* digit = begin; digit != end; ++digit) {
      *digit = *digit >= 'a' ? static_cast<char>(*digit - 'a' + 'A') : *digit;
    }
  }
  return {begin, static_cast<size_t>(end - begin)};
}

}  // namespace

void FormatMessageText(const wchar_t* format, uint32_t argument, MessageBuffer& message) {
  size_t length = 0;
  const auto put = [&](wchar_t character) {
    if (length + 1 < message.size()) {
      message[length++] = character;
    }
  };
  DigitBuffer digits;
  bool argumentUsed = false;
  while (*format != L'\0') {
    if (format[0] == L'%' && format[1] == L'%') {
      put(L'%');
      format += 2;
      continue;
    }
    if (format[0] == L'%' && !argumentUsed) {
      const wchar_t* const letter = format + (format[1] == L'l' ? 2 : 1);
      const std::string_view number = Convert(*letter, argument, digits);
      if (!number.empty()) {
        for (const char digit : number) {
          put(static_cast<wchar_t>(digit));
        }
        argumentUsed = true;
        format = letter + 1;
        continue;
      }
    }
    put(*format++);
  }
  message[length] = L'\0';
}

}  // namespace dozewell
