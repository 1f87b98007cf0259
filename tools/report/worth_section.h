#ifndef DOZEWELL_REPORT_WORTH_SECTION_H_
#define DOZEWELL_REPORT_WORTH_SECTION_H_

#include <cstdint>
#include <string_view>

#include "common/comparison.h"
#include "report/section.h"

namespace dozewell::report {

// What predictions made of the history's sleeps, beside the user's own timeout.
Section WorthSection(const Comparison& comparison, int64_t hibernateAfterSeconds);

// The same section where nothing can be compared: for a history without a sleep that ended, and for
// one that cannot be replayed.
Section TooShortSection();
Section BrokenSection(std::string_view why);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_WORTH_SECTION_H_
