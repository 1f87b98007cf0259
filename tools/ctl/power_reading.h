#ifndef DOZEWELL_CTL_POWER_READING_H_
#define DOZEWELL_CTL_POWER_READING_H_

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "ctl/power_names.h"
#include "ctl/service_calls.h"

namespace dozewell::ctl {

// The active scheme's settings for one source, as far as they could be read.
struct PowerReading {
  // Done: at least one was read. Otherwise what the last call said.
  CallResult result;
  std::array<std::optional<uint32_t>, kPowerSettings.size()> values;  // by kPowerSettings
};

// Asks for one setting after the other: a machine that lacks one has the others.
PowerReading ReadPower(uint32_t source);

// The readings of some sources side by side, a line for each setting.
std::string PowerTable(std::span<const NamedNumber> sources,
                       std::span<const PowerReading> readings);

// The readings as a JSON object with an object for each source; null is what was not read.
std::string PowerJson(std::span<const NamedNumber> sources, std::span<const PowerReading> readings);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_POWER_READING_H_
