#ifndef DOZEWELL_REPORT_DAY_GROUPS_TEXT_H_
#define DOZEWELL_REPORT_DAY_GROUPS_TEXT_H_

#include <string>

#include "prediction/day_groups.h"

namespace dozewell::report {

// Which days count together, in a sentence. Null when each day counts alone.
std::string DayGroupsText(const DayGroups* groups);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_DAY_GROUPS_TEXT_H_
