#include "power/power_timeouts.h"

#include "power/power_scheme.h"
#include "power/scheme_settings.h"

namespace dozewell {
namespace {

constexpr uint32_t kSecondsPerMinute = 60;
constexpr uint32_t kAsStored = 1;

struct Setting {
  uint32_t PowerTimeouts::*field;
  uint32_t bit;
  uint32_t schemeUnits;  // how many of the scheme's units make one of the record's
  SchemeSetting scheme;
};

constexpr Setting kSettings[] = {
    {&PowerTimeouts::displayOff, kDisplayOff, kSecondsPerMinute, kDisplayOffSetting},
    {&PowerTimeouts::sleepAfter, kSleepAfter, kSecondsPerMinute, kSleepAfterSetting},
    {&PowerTimeouts::hibernateAfter, kHibernateAfter, kSecondsPerMinute, kHibernateAfterSetting},
    {&PowerTimeouts::allowWakeTimers, kAllowWakeTimers, kAsStored, kAllowWakeTimersSetting},
    {&PowerTimeouts::allowHybridSleep, kAllowHybridSleep, kAsStored, kAllowHybridSleepSetting},
};

// Hands the selected settings to `use` in turn and gives the mask of those it answered true for.
template <typename Use>
uint32_t ForSelected(uint32_t mask, uint32_t source, Use use) {
  if (source != kPowerSourceAC && source != kPowerSourceDC) return 0;
  uint32_t used = 0;
  for (const Setting& setting : kSettings) {
    if ((mask & setting.bit) != 0 && use(setting)) used |= setting.bit;
  }
  return used;
}

}  // namespace

uint32_t ReadPowerTimeouts(uint32_t mask, uint32_t source, const Guid& scheme,
                           PowerTimeouts* timeouts) {
  if (timeouts == nullptr) return 0;
  return ForSelected(mask, source, [&](const Setting& setting) {
    uint32_t value = 0;
    const auto& [subgroup, id] = setting.scheme;
    if (!ReadSchemeValue(source, scheme, subgroup, id, value)) return false;
    timeouts->*setting.field = value / setting.schemeUnits;
    return true;
  });
}

uint32_t WritePowerTimeouts(uint32_t mask, uint32_t source, const Guid& scheme,
                            const PowerTimeouts* timeouts) {
  if (timeouts == nullptr) return 0;
  const uint32_t written = ForSelected(mask, source, [&](const Setting& setting) {
    return WriteSchemeValue(source, scheme, setting.scheme.subgroup, setting.scheme.setting,
                            timeouts->*setting.field * setting.schemeUnits);
  });
  if (written != 0) SetActivePowerScheme(scheme);
  return written;
}

}  // namespace dozewell
