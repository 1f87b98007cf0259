#ifndef DOZEWELL_REPORT_WORTH_SECTION_H_
#define DOZEWELL_REPORT_WORTH_SECTION_H_

#include <string_view>

#include "report/section.h"
#include "report/walked_table.h"

namespace dozewell::report {

// What the service made of the recorded sleeps, beside the user's own timeout.
Section WorthSection(const WalkedHistory& history);

// The same section where nothing can be compared: for a history without a sleep that ended, and for
// one that cannot be replayed.
Section TooShortSection();
Section BrokenSection(std::string_view why);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_WORTH_SECTION_H_
