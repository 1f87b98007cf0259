#ifndef DOZEWELL_REPLAY_TAKEN_SETTINGS_H_
#define DOZEWELL_REPLAY_TAKEN_SETTINGS_H_

#include "replay/command.h"
#include "replay/file_configurations.h"

namespace dozewell::replay {

// The settings that the user named, or the default ones. What they say of the machine goes into the
// results, which must outlive them. Throws ToolError.
FileConfigurations TakeSettings(const Options& options, Results& results);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_TAKEN_SETTINGS_H_
