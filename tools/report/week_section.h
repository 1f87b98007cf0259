#ifndef DOZEWELL_REPORT_WEEK_SECTION_H_
#define DOZEWELL_REPORT_WEEK_SECTION_H_

#include <span>
#include <string>

#include "prediction/tracker_data.h"

namespace dozewell::report {

// The cycle as a map of probabilities, from those of all slots.
std::string WeekSection(const CycleShape& shape, std::span<const float> probabilities);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_WEEK_SECTION_H_
