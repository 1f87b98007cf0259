#ifndef DOZEWELL_CTL_GUID_TEXT_H_
#define DOZEWELL_CTL_GUID_TEXT_H_

#include <string>

#include "power/power_scheme.h"

namespace dozewell::ctl {

// "381B4222-F694-41F0-9685-FF5BB260DF2E"
std::string GuidText(const Guid& guid);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_GUID_TEXT_H_
