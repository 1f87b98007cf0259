#include "base/numbers.h"

#include <algorithm>
#include <limits>

namespace dozewell {

int32_t Atoi(std::string_view text) {
  constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  bool negative = false;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  // One more than INT32_MAX, so that the most negative number is reached too.
  constexpr int64_t kLimit = int64_t{std::numeric_limits<int32_t>::max()} + 1;
  int64_t magnitude = 0;
  for (char c : text) {
    if (c < '0' || c > '9') break;
    magnitude = std::min(magnitude * 10 + (c - '0'), kLimit);
  }
  return static_cast<int32_t>(negative ? -magnitude : std::min(magnitude, kLimit - 1));
}

int64_t TruncateToInt64(double value) {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  if (value >= -kTwoTo63 && value < kTwoTo63) return static_cast<int64_t>(value);
  return std::numeric_limits<int64_t>::min();
}

}  // namespace dozewell
