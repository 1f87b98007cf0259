#ifndef DOZEWELL_REPORT_GAIN_SECTION_H_
#define DOZEWELL_REPORT_GAIN_SECTION_H_

#include <cstdint>
#include <string>

#include "common/comparison.h"

namespace dozewell::report {

// Compares what predictions make of the history's sleeps with what fixed timeouts make of them.
std::string GainSection(const Comparison& comparison, int64_t hibernateAfterSeconds);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_GAIN_SECTION_H_
