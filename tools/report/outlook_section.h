#ifndef DOZEWELL_REPORT_OUTLOOK_SECTION_H_
#define DOZEWELL_REPORT_OUTLOOK_SECTION_H_

#include <string>

#include "prediction/arbitrary_cycle_probability_tracker.h"

namespace dozewell::report {

// What is predicted for the days from `now` on.
std::string OutlookSection(ArbitraryCycleProbabilityTracker& tracker, const tm& now);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_OUTLOOK_SECTION_H_
