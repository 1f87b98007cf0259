#ifndef DOZEWELL_REPORT_GAIN_SECTION_H_
#define DOZEWELL_REPORT_GAIN_SECTION_H_

#include <cstdint>
#include <string>

#include "common/comparison.h"

namespace dozewell::report {

// What predictions made of the history's sleeps, next to fixed timeouts.
std::string GainSection(const Comparison& comparison, int64_t hibernateAfterSeconds);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_GAIN_SECTION_H_
