#ifndef DOZEWELL_CTL_LIVE_IDENTITY_H_
#define DOZEWELL_CTL_LIVE_IDENTITY_H_

#include <optional>
#include <string>

#include "base/wall_clock.h"
#include "common/json.h"
#include "common/machine_identity.h"

namespace dozewell::ctl {

// This machine, with the settings that its service reads and the last event that it has saved.
MachineIdentity LiveIdentity();
// The same with data whose last event is of this local time.
MachineIdentity LiveIdentity(const std::optional<tm>& last);

// IdentifiedLine with LiveIdentity: what a command prints for programs.
std::string LiveLine(const Json& document);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_IDENTITY_H_
