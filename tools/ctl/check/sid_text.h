#ifndef DOZEWELL_CTL_CHECK_SID_TEXT_H_
#define DOZEWELL_CTL_CHECK_SID_TEXT_H_

#include <string>

namespace dozewell::ctl {

// An account's identifier (a SID) as text, "S-1-5-18"; empty when the system makes none of it.
std::string SidText(void* sid);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_SID_TEXT_H_
