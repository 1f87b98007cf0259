#ifndef DOZEWELL_BASE_UTF8_H_
#define DOZEWELL_BASE_UTF8_H_

#include <string>
#include <string_view>

namespace dozewell {

// The lone surrogate kEscapedByte + b stands for a byte b that is not part of UTF-8, so that any
// bytes survive the way to wide characters and back.
constexpr wchar_t kEscapedByte = 0xDC00;

// UTF-8 to wide characters, UTF-16 where those have 16 bits.
std::wstring WidenUtf8(std::string_view text);

// Wide characters to UTF-8, the inverse of WidenUtf8.
std::string NarrowToUtf8(std::wstring_view text);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_UTF8_H_
