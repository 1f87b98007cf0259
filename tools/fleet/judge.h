#ifndef DOZEWELL_FLEET_JUDGE_H_
#define DOZEWELL_FLEET_JUDGE_H_

#include <cstdint>

#include "fleet/find_histories.h"
#include "fleet/machine_row.h"
#include "fleet/question.h"
#include "prediction/configurations.h"

namespace dozewell::fleet {

// What these settings ask about each machine, without version, settings and part. Throws ToolError
// and what a simulation throws when they cannot be simulated at all.
FleetQuestion Ask(IConfigurations& configuration, int64_t userTimeoutSeconds,
                  const SearchHabits& habits);

// Reads a history and walks it forward with every choice. Whatever is wrong with it is in the row.
// May be called on several threads, each with a configuration of its own. Never throws.
MachineRow Judge(const FoundHistory& found, IConfigurations& configuration,
                 const FleetQuestion& question);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_JUDGE_H_
