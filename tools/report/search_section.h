#ifndef DOZEWELL_REPORT_SEARCH_SECTION_H_
#define DOZEWELL_REPORT_SEARCH_SECTION_H_

#include <cstdint>
#include <string>
#include <vector>

#include "common/comparison.h"
#include "report/section.h"

namespace dozewell::report {

// What the search chose for each scoring weight and why. `strength` is the text of the setting that
// says which of them is used. There are as many weights as results.
Section SearchSection(const Comparison& comparison, const std::vector<int32_t>& weights,
                      const std::string& strength, int64_t hibernateAfterSeconds);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_SEARCH_SECTION_H_
