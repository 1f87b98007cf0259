#include <windows.h>

#include <cstdlib>

#include "shared/fields.h"

namespace dozewell::lab {

Fields SplitFields(const std::string& line) {
  Fields fields;
  size_t start = 0;
  for (size_t tab = line.find('\t'); tab != std::string::npos; tab = line.find('\t', start)) {
    fields.push_back(line.substr(start, tab - start));
    start = tab + 1;
  }
  fields.push_back(line.substr(start));
  return fields;
}

std::string JoinFields(const Fields& fields) {
  std::string line;
  for (const std::string& field : fields) {
    if (&field != &fields.front()) line += '\t';
    line += field;
  }
  return line;
}

std::string ToHex(const void* data, size_t size) {
  static constexpr char kDigits[] = "0123456789abcdef";
  const auto* const bytes = static_cast<const uint8_t*>(data);
  std::string digits;
  digits.reserve(2 * size);
  for (size_t i = 0; i < size; ++i) {
    digits += kDigits[bytes[i] >> 4];
    digits += kDigits[bytes[i] & 0xF];
  }
  return digits;
}

std::vector<uint8_t> FromHex(const std::string& digits) {
  std::vector<uint8_t> bytes;
  for (size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes.push_back(static_cast<uint8_t>(std::strtoul(digits.substr(i, 2).c_str(), nullptr, 16)));
  }
  return bytes;
}

std::wstring ToWide(const std::string& text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(
      static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size)));
  return wide;
}

std::string ToNarrow(const std::wstring& text) {
  const int size = static_cast<int>(text.size());
  // No character takes more than three bytes for each 16 bits.
  std::string narrow(3 * text.size(), '\0');
  narrow.resize(static_cast<size_t>(WideCharToMultiByte(
      CP_UTF8, 0, text.data(), size, narrow.data(), 3 * size, nullptr, nullptr)));
  return narrow;
}

uint32_t ToNumber(const std::string& text) {
  return static_cast<uint32_t>(std::strtoul(text.c_str(), nullptr, 10));
}

}  // namespace dozewell::lab
