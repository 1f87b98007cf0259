#include "fleet/energy.h"

#include <cmath>
#include <cstdint>

#include "common/option_text.h"

namespace dozewell::fleet {

double EnergyRates::KilowattHours(const OutcomeSums& sums) const {
  constexpr double kWattSeconds = 3.6e6;
  return (static_cast<double>(sums.sleepSeconds) * wattsAsleep +
          static_cast<double>(sums.hibernateSeconds) * wattsHibernated) /
         kWattSeconds;
}

double ParseRate(const char* option, const std::optional<std::string>& text, double otherwise) {
  constexpr double kMost = 1e4;
  if (!text) return otherwise;
  const std::optional<double> number = ParseNumber<double>(*text);
  // Not-a-number is in no range.
  if (number && *number >= 0 && *number <= kMost) return *number;
  throw ToolError(WrongValue(option, "a number from 0 to 10000, such as 2.5", *text));
}

std::string DecimalText(double value, int decimals) {
  double unit = 1;
  for (int i = 0; i < decimals; ++i) unit *= 10;
  const auto whole = static_cast<int64_t>(std::llround(value * unit));
  std::string digits = std::to_string(std::llabs(whole));
  const auto after = static_cast<size_t>(decimals);
  if (digits.size() <= after) digits.insert(0, after + 1 - digits.size(), '0');
  if (after > 0) digits.insert(digits.size() - after, 1, '.');
  return (whole < 0 ? "-" : "") + digits;
}

}  // namespace dozewell::fleet
