#ifndef DOZEWELL_CTL_POWER_READING_H_
#define DOZEWELL_CTL_POWER_READING_H_

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "common/json.h"
#include "ctl/power_names.h"
#include "ctl/service_calls.h"

namespace dozewell::ctl {

// The active scheme's settings for one source, as far as they could be read.
struct PowerReading {
  // Done if at least one was read, otherwise the result of the last call.
  CallResult result;
  std::array<std::optional<uint32_t>, kPowerSettings.size()> values;  // by kPowerSettings
};

// Reads the settings one by one, since a machine may lack some of them.
PowerReading ReadPower(uint32_t source);

// The readings of some sources side by side, a line for each setting.
std::string PowerTable(std::span<const NamedNumber> sources,
                       std::span<const PowerReading> readings);

// The readings as a JSON object with an object for each source; null is what was not read.
Json PowerJson(std::span<const NamedNumber> sources, std::span<const PowerReading> readings);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_POWER_READING_H_
