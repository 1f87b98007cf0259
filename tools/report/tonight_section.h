#ifndef DOZEWELL_REPORT_TONIGHT_SECTION_H_
#define DOZEWELL_REPORT_TONIGHT_SECTION_H_

#include "common/explanation.h"
#include "common/rates_explanation.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "report/section.h"

namespace dozewell::report {

// What a suspend at the time of the explanation leads to, and what is predicted for the days after
// it.
Section TonightSection(const Explanation& explanation, ArbitraryCycleProbabilityTracker& tracker);
// The same for the predictor of rates, which looks no further than the next use.
Section TonightSection(const RatesExplanation& explanation);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_TONIGHT_SECTION_H_
