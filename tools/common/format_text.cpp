#include "common/format_text.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace dozewell {

std::string FormatText(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::va_list sameAgain;
  va_copy(sameAgain, arguments);
  const auto length = static_cast<size_t>(std::vsnprintf(nullptr, 0, format, arguments));
  va_end(arguments);
  std::string text(length, '\0');
  // The terminating null goes where the string has its own.
  std::vsnprintf(text.data(), length + 1, format, sameAgain);
  va_end(sameAgain);
  return text;
}

}  // namespace dozewell
