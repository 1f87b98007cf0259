#ifndef DOZEWELL_CTL_LIVE_IDENTITY_H_
#define DOZEWELL_CTL_LIVE_IDENTITY_H_

#include <string>

#include "common/json.h"
#include "common/machine_identity.h"

namespace dozewell::ctl {

// This machine, with the settings that its service reads and the last event that it has saved.
MachineIdentity LiveIdentity();
// The same with the last event of these data.
MachineIdentity LiveIdentity(const TrackerData& data);

// IdentifiedLine with LiveIdentity: what a command prints for programs.
std::string LiveLine(const Json& document);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_IDENTITY_H_
