#ifndef DOZEWELL_REPORT_CHOICES_SECTION_H_
#define DOZEWELL_REPORT_CHOICES_SECTION_H_

#include "common/comparison.h"
#include "report/section.h"

namespace dozewell::report {

// What each choice makes of the history's sleeps, replayed as a whole. The history must have one.
Section ChoicesSection(const Comparison& comparison);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_CHOICES_SECTION_H_
