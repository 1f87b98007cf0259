#ifndef DOZEWELL_FLEET_RESULT_TEXT_H_
#define DOZEWELL_FLEET_RESULT_TEXT_H_

#include <string>

#include "common/json.h"
#include "fleet/energy.h"
#include "fleet/machine_row.h"
#include "fleet/question.h"
#include "fleet/totals.h"

namespace dozewell::fleet {

// What all machines come to, for programs.
Json TotalsJson(const FleetTotals& totals);

// The same for people: a table of the choices and a recommendation for each group.
std::string TotalsText(const FleetTotals& totals, const EnergyRates& rates);

// "2024-01-01" of wall-clock seconds; empty for a time outside the calendar.
std::string DayText(int64_t seconds);

// "strength 2 (weight 50)".
std::string StrengthText(const FleetQuestion& question, size_t strength);

// The table of machines: a line that says what the table rests on, one with the names of the
// columns, and one for each machine.
std::string CsvHead(const FleetQuestion& question);
std::string CsvLine(const MachineRow& row, const FleetQuestion& question, const EnergyRates& rates);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_RESULT_TEXT_H_
