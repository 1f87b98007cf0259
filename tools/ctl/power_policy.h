#ifndef DOZEWELL_CTL_POWER_POLICY_H_
#define DOZEWELL_CTL_POWER_POLICY_H_

#include <cstdint>
#include <optional>

#include "power/power_scheme.h"

namespace dozewell::ctl {

// Whether a policy of the machine's administrators overrules the power schemes. Nothing when the
// system does not tell.

// A setting, for kPowerSourceAC or kPowerSourceDC.
std::optional<bool> IsSettingUnderPolicy(uint32_t source, const Guid& setting);

// Which scheme is the active one.
std::optional<bool> IsActiveSchemeUnderPolicy();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_POWER_POLICY_H_
