#ifndef DOZEWELL_REPORT_NOW_SECTION_H_
#define DOZEWELL_REPORT_NOW_SECTION_H_

#include <string>

#include "common/explanation.h"

namespace dozewell::report {

// What a suspend at the time of the explanation leads to, and why.
std::string NowSection(const Explanation& explanation);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_NOW_SECTION_H_
