#ifndef DOZEWELL_REPORT_WHY_SECTION_H_
#define DOZEWELL_REPORT_WHY_SECTION_H_

#include "common/explanation.h"
#include "common/rates_explanation.h"
#include "report/section.h"

namespace dozewell::report {

// Why the times of tonight are what they are, in sentences, and the evidence for who wants it.
Section WhySection(const Explanation& explanation);
// The same for the predictor of rates.
Section WhySection(const RatesExplanation& explanation);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_WHY_SECTION_H_
