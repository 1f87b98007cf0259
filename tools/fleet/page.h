#ifndef DOZEWELL_FLEET_PAGE_H_
#define DOZEWELL_FLEET_PAGE_H_

#include <string>

#include "fleet/energy.h"
#include "fleet/totals.h"

namespace dozewell::fleet {

// A page of HTML for all machines that stands alone. The same totals make the same page.
std::string MakePage(const FleetTotals& totals, const EnergyRates& rates);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_PAGE_H_
