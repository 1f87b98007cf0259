#ifndef DOZEWELL_REPORT_PAST_SECTION_H_
#define DOZEWELL_REPORT_PAST_SECTION_H_

#include <vector>

#include "optimizer/simulator/sim_time_line.h"
#include "report/day_strips.h"
#include "report/section.h"

namespace dozewell::report {

// The stretches of a simulated time line, up to its last entry and within the calendar. Their kinds
// are those of the section's figure: in use, asleep, hibernated, woken by the timer.
std::vector<Stretch> PastStretches(const SimTimeLine& timeLine);

// The last days of a history's time line, simulated with the settings.
Section PastSection(const SimTimeLine& timeLine);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_PAST_SECTION_H_
