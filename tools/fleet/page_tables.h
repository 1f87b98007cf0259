#ifndef DOZEWELL_FLEET_PAGE_TABLES_H_
#define DOZEWELL_FLEET_PAGE_TABLES_H_

#include <string>
#include <vector>

#include "fleet/energy.h"
#include "fleet/totals.h"

namespace dozewell::fleet {

// The tables of the page, as HTML.

// Every choice with what all machines come to.
std::string ChoicesTable(const FleetTotals& totals, const EnergyRates& rates);

// A strength for each group and predictor, beside the users' own timeout.
std::string StrengthsTable(const FleetTotals& totals, const EnergyRates& rates);

// How many machines have a figure in each bin, by choice.
std::string SpreadTable(const FleetTotals& totals, const char* caption,
                        Distribution Spread::*distribution);

std::string LosersTable(const FleetTotals& totals);

// Histories with something wrong.
std::string NotedTable(const char* caption, const std::vector<NotedHistory>& histories);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_PAGE_TABLES_H_
