#ifndef DOZEWELL_REPORT_WALKED_SECTION_H_
#define DOZEWELL_REPORT_WALKED_SECTION_H_

#include "report/section.h"
#include "report/walked_table.h"

namespace dozewell::report {

// What became of the recorded sleeps with each choice, at the strength of the settings.
Section WalkedSection(const WalkedHistory& history);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_WALKED_SECTION_H_
