#include "base/utf8.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace dozewell {
namespace {

// Wide characters are signed on some systems.
constexpr uint32_t CodeOf(wchar_t c) { return static_cast<std::make_unsigned_t<wchar_t>>(c); }

constexpr bool IsHighSurrogate(uint32_t c) { return c >= 0xD800 && c < 0xDC00; }
constexpr bool IsLowSurrogate(uint32_t c) { return c >= 0xDC00 && c < 0xE000; }

struct Sequence {
  size_t length;  // bytes, 0 when they are not UTF-8
  uint32_t codePoint;
};

Sequence DecodeFirst(std::string_view text) {
  constexpr uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return {1, lead};
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC0 || lead >= 0xF8 || text.size() < length) return {0, 0};
  uint32_t codePoint = lead & (0xFFU >> (length + 1));
  for (char c : text.substr(1, length - 1)) {
    if ((c & 0xC0) != 0x80) return {0, 0};
    codePoint = codePoint << 6 | (static_cast<unsigned char>(c) & 0x3FU);
  }
  const bool surrogate = codePoint >= 0xD800 && codePoint < 0xE000;
  if (codePoint < kSmallest[length] || codePoint > 0x10FFFF || surrogate) return {0, 0};
  return {length, codePoint};
}

void AppendWide(uint32_t codePoint, std::wstring& text) {
  if (sizeof(wchar_t) == 2 && codePoint > 0xFFFF) {
    text += static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10));
    text += static_cast<wchar_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
  } else {
    text += static_cast<wchar_t>(codePoint);
  }
}

void AppendUtf8(uint32_t codePoint, std::string& text) {
  if (codePoint < 0x80) {
    text += static_cast<char>(codePoint);
    return;
  }
  constexpr uint32_t kLeadMarks[] = {0, 0xC0, 0xE0, 0xF0};
  const int continuationBytes = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
  text += static_cast<char>(kLeadMarks[continuationBytes] | codePoint >> 6 * continuationBytes);
  for (int i = continuationBytes - 1; i >= 0; --i) {
    text += static_cast<char>(0x80U | (codePoint >> 6 * i & 0x3F));
  }
}

}  // namespace

std::wstring WidenUtf8(std::string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  while (!text.empty()) {
    const Sequence first = DecodeFirst(text);
    if (first.length == 0) {
      wide += static_cast<wchar_t>(kEscapedByte + static_cast<unsigned char>(text.front()));
      text.remove_prefix(1);
    } else {
      AppendWide(first.codePoint, wide);
      text.remove_prefix(first.length);
    }
  }
  return wide;
}

std::string NarrowToUtf8(std::wstring_view text) {
  std::string narrow;
  narrow.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const uint32_t c = CodeOf(text[i]);
    const uint32_t next = i + 1 < text.size() ? CodeOf(text[i + 1]) : 0;
    if (IsHighSurrogate(c) && IsLowSurrogate(next)) {
      AppendUtf8(0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00), narrow);
      ++i;
    } else if (c >= kEscapedByte && c < kEscapedByte + 0x100) {
      narrow += static_cast<char>(c - kEscapedByte);
    } else {
      AppendUtf8(c, narrow);
    }
  }
  return narrow;
}

}  // namespace dozewell
