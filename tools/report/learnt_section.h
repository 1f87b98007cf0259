#ifndef DOZEWELL_REPORT_LEARNT_SECTION_H_
#define DOZEWELL_REPORT_LEARNT_SECTION_H_

#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "report/section.h"

namespace dozewell::report {

// The cycle as a map of how likely the machine is in use, and how often each time was seen.
Section LearntSection(ArbitraryCycleProbabilityTracker& tracker);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_LEARNT_SECTION_H_
