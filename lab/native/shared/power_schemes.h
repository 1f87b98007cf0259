#ifndef DOZEWELL_LAB_SHARED_POWER_SCHEMES_H_
#define DOZEWELL_LAB_SHARED_POWER_SCHEMES_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "shared/machine_state.h"

namespace dozewell::lab {

// The machine's power schemes by the identifiers (GUIDs) that the system has for them.

// Null when there is no such scheme.
PowerScheme* FindPowerScheme(MachineState& machine, const void* scheme);

// The place of a setting in a scheme.
std::optional<size_t> FindPowerSetting(const void* subgroup, const void* setting);

// The same for a setting of any subgroup.
std::optional<size_t> FindPowerSetting(const void* setting);

struct PowerValue {
  std::string name;              // of its scheme and setting
  std::atomic<uint32_t>* value;  // null when there is no such scheme or setting
};

PowerValue FindPowerValue(MachineState& machine, size_t source, const void* scheme,
                          const void* subgroup, const void* setting);

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_SHARED_POWER_SCHEMES_H_
