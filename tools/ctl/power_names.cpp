#include "ctl/power_names.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>

#include "common/duration_text.h"
#include "common/text.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kNever = "never";

// The scheme keeps seconds in 32 bits.
constexpr uint32_t kMostMinutes = std::numeric_limits<uint32_t>::max() / 60;

constexpr NamedNumber kWakeTimerValues[] = {{"off", 0}, {"on", 1}, {"important", 2}};
constexpr NamedNumber kHybridSleepValues[] = {{"off", 0}, {"on", 1}};

}  // namespace

const std::array<PowerSetting, 5> kPowerSettings = {{
    {"display-off", kDisplayOff, &PowerTimeouts::displayOff, "displayOffMinutes", {}},
    {"sleep-after", kSleepAfter, &PowerTimeouts::sleepAfter, "sleepAfterMinutes", {}},
    {"hibernate-after",
     kHibernateAfter,
     &PowerTimeouts::hibernateAfter,
     "hibernateAfterMinutes",
     {}},
    {"wake-timers", kAllowWakeTimers, &PowerTimeouts::allowWakeTimers, "allowWakeTimers",
     kWakeTimerValues},
    {"hybrid-sleep", kAllowHybridSleep, &PowerTimeouts::allowHybridSleep, "allowHybridSleep",
     kHybridSleepValues},
}};

std::optional<uint32_t> NumberOf(std::span<const NamedNumber> names, std::string_view name) {
  const auto found = std::ranges::find(
      names, name, [](const NamedNumber& named) { return std::string_view(named.name); });
  return found == names.end() ? std::nullopt : std::optional(found->number);
}

std::string NameOf(std::span<const NamedNumber> names, uint32_t number) {
  const auto found = std::ranges::find(names, number, &NamedNumber::number);
  return found == names.end() ? std::to_string(number) : found->name;
}

std::string ListOf(std::span<const NamedNumber> names) {
  std::string list;
  for (size_t i = 0; i < names.size(); ++i) {
    if (i > 0) list += i + 1 < names.size() ? ", " : " or ";
    list += names[i].name;
  }
  return list;
}

const PowerSetting* FindPowerSetting(std::string_view name) {
  const auto* const found =
      std::ranges::find(kPowerSettings, name,
                        [](const PowerSetting& setting) { return std::string_view(setting.name); });
  return found == kPowerSettings.end() ? nullptr : found;
}

std::optional<uint32_t> ParsePowerValue(const PowerSetting& setting, std::string_view text) {
  if (!setting.values.empty()) {
    if (const auto number = NumberOf(setting.values, text)) return number;
    const auto number = ParseNumber<uint32_t>(text);
    return number && *number < setting.values.size() ? number : std::nullopt;
  }
  const auto minutes = ParseTimeout(text);
  if (!minutes || *minutes > kMostMinutes) return std::nullopt;
  return static_cast<uint32_t>(*minutes);
}

std::string PowerValueRange(const PowerSetting& setting) {
  if (!setting.values.empty()) return ListOf(setting.values);
  return TimeoutRange(kMostMinutes);
}

std::string PowerValueText(const PowerSetting& setting, uint32_t value) {
  if (!setting.values.empty()) return NameOf(setting.values, value);
  return value == 0 ? kNever : DurationText(value);
}

}  // namespace dozewell::ctl
