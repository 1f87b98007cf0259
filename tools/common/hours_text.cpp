#include "common/hours_text.h"

#include <array>
#include <charconv>

namespace dozewell {

std::string HoursText(int64_t seconds) {
  constexpr double kSecondsPerHour = 3600;
  constexpr int kDecimals = 1;
  std::array<char, 32> text;  // long enough for any number of 64 bits
  const double hours = static_cast<double>(seconds) / kSecondsPerHour;
  const auto result = std::to_chars(text.data(), text.data() + text.size(), hours,
                                    std::chars_format::fixed, kDecimals);
  return std::string(text.data(), result.ptr);
}

}  // namespace dozewell
