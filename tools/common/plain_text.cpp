#include "common/plain_text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

#include "base/utf8.h"

namespace dozewell {
namespace {

struct Range {
  uint32_t first;
  uint32_t last;
};
constexpr Range kObeyed[] = {
    {0x0000, 0x001F},  // controls of ASCII
    {0x007F, 0x009F},  // DEL, and controls of Latin-1
    {0x061C, 0x061C},  // Arabic letter mark
    {0x200E, 0x200F},  // left-to-right and right-to-left mark
    {0x2028, 0x202E},  // line and paragraph separator; embeddings and overrides of the direction
    {0x2066, 0x2069},  // isolates of the direction
    {kEscapedByte + 0x80, kEscapedByte + 0x9F},
};

bool IsHighSurrogate(uint32_t character) { return character >= 0xD800 && character < 0xDC00; }

bool IsObeyed(uint32_t character) {
  return std::ranges::any_of(kObeyed, [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
}

}  // namespace

std::string PlainText(std::string_view text, char replacement) {
  std::wstring wide = WidenUtf8(text);
  bool isSecondHalf = false;  // of a character that takes two
  for (wchar_t& c : wide) {
    const uint32_t character = std::char_traits<wchar_t>::to_int_type(c);
    if (!isSecondHalf && IsObeyed(character)) c = static_cast<wchar_t>(replacement);
    isSecondHalf = IsHighSurrogate(character);
  }
  return NarrowToUtf8(wide);
}

}  // namespace dozewell
