#ifndef DOZEWELL_CTL_POWER_NAMES_H_
#define DOZEWELL_CTL_POWER_NAMES_H_

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "power/power_timeouts.h"

namespace dozewell::ctl {

// A number of the RPC interface and its name on the command line.
struct NamedNumber {
  const char* name;
  uint32_t number;
};

inline constexpr NamedNumber kSources[] = {{"ac", 0}, {"dc", 1}};
inline constexpr NamedNumber kSchemes[] = {
    {"balanced", 0}, {"power-saver", 1}, {"high-performance", 2}};

// The number of a name; nothing for an unknown name.
std::optional<uint32_t> NumberOf(std::span<const NamedNumber> names, std::string_view name);

// The name of a number, or the number itself.
std::string NameOf(std::span<const NamedNumber> names, uint32_t number);

// The names with commas and an "or" between.
std::string ListOf(std::span<const NamedNumber> names);

// One of the five settings of a power scheme.
struct PowerSetting {
  const char* name;
  uint32_t mask;
  uint32_t PowerTimeouts::*field;
  const char* jsonName;
  std::span<const NamedNumber> values;  // none: a timeout in minutes, where 0 is never
};

extern const std::array<PowerSetting, 5> kPowerSettings;

// Null for an unknown name.
const PowerSetting* FindPowerSetting(std::string_view name);

// The number of "30m" or "never", of "on", or of the plain number; nothing for other texts and for
// numbers out of the setting's range.
std::optional<uint32_t> ParsePowerValue(const PowerSetting& setting, std::string_view text);

// The values that the setting may have, in words.
std::string PowerValueRange(const PowerSetting& setting);

std::string PowerValueText(const PowerSetting& setting, uint32_t value);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_POWER_NAMES_H_
