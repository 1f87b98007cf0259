#ifndef DOZEWELL_REPORT_PAST_SECTION_H_
#define DOZEWELL_REPORT_PAST_SECTION_H_

#include <string>
#include <vector>

#include "optimizer/simulator/sim_time_line.h"
#include "report/day_strips.h"

namespace dozewell::report {

// What a simulated time line was in, up to its last entry and within the calendar. The kinds are
// those of the section's figure: in use, asleep, hibernated, woken by the timer.
std::vector<Stretch> PastStretches(const SimTimeLine& timeLine);

// The last days of the history's time line as the settings would have made it.
std::string PastSection(const SimTimeLine& timeLine);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_PAST_SECTION_H_
