#include "common/float_text.h"

#include <charconv>
#include <cmath>
#include <iterator>

#include "base/numbers.h"

namespace dozewell {
namespace {

constexpr const char* kNotANumber = "nan";

// Longer than any double in its shortest form or with 9 digits.
constexpr int kBufferSize = 64;

}  // namespace

std::string FloatText(float value) {
  if (std::isnan(value)) return kNotANumber;
  constexpr int kDigits = 9;
  char text[kBufferSize];
  const auto result =
      std::to_chars(std::begin(text), std::end(text), value, std::chars_format::general, kDigits);
  return std::string(text, result.ptr);
}

std::string DoubleText(double value) {
  if (std::isnan(value)) return kNotANumber;
  char text[kBufferSize];
  const int64_t whole = TruncateToInt64(value);
  const bool isWhole = static_cast<double>(whole) == value && !(value == 0 && std::signbit(value));
  const auto result = isWhole ? std::to_chars(std::begin(text), std::end(text), whole)
                              : std::to_chars(std::begin(text), std::end(text), value);
  return std::string(text, result.ptr);
}

}  // namespace dozewell
