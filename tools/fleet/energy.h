#ifndef DOZEWELL_FLEET_ENERGY_H_
#define DOZEWELL_FLEET_ENERGY_H_

#include <optional>
#include <string>

#include "fleet/outcome_sums.h"

namespace dozewell::fleet {

// What machines take and what it costs, as docs/fleet.md says where it comes from.
inline constexpr double kDefaultWattsAsleep = 4;
inline constexpr double kDefaultWattsHibernated = 2;
inline constexpr double kDefaultPrice = 0.2;

struct EnergyRates {
  double wattsAsleep = kDefaultWattsAsleep;
  double wattsHibernated = kDefaultWattsHibernated;
  double price = kDefaultPrice;  // of a kilowatt-hour, in whatever currency

  double KilowattHours(const OutcomeSums& sums) const;
  double Cost(const OutcomeSums& sums) const { return KilowattHours(sums) * price; }
};

// The number of an option, 0 or more, such as 2.5. Throws ToolError for any other text.
double ParseRate(const char* option, const std::optional<std::string>& text, double otherwise);

// With this many decimals, whatever the runtime library.
std::string DecimalText(double value, int decimals);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_ENERGY_H_
