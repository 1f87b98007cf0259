#include "power/power_timeouts.h"

#include "power/power_scheme.h"

namespace dozewell {
namespace {

constexpr uint32_t kSecondsPerMinute = 60;
constexpr uint32_t kAsStored = 1;

constexpr Guid kDisplaySubgroup = {
    0x7516B95F, 0xF776, 0x4464, {0x8C, 0x53, 0x06, 0x16, 0x7F, 0x40, 0xCC, 0x99}};
constexpr Guid kSleepSubgroup = {
    0x238C9FA8, 0x0AAD, 0x41ED, {0x83, 0xF4, 0x97, 0xBE, 0x24, 0x2C, 0x8F, 0x20}};

struct Setting {
  uint32_t PowerTimeouts::*field;
  uint32_t bit;
  uint32_t schemeUnits;  // how many of the scheme's units make one of the record's
  Guid subgroup;
  Guid setting;
};

constexpr Setting kSettings[] = {
    {&PowerTimeouts::displayOff,
     kDisplayOff,
     kSecondsPerMinute,
     kDisplaySubgroup,
     {0x3C0BC021, 0xC8A8, 0x4E07, {0xA9, 0x73, 0x6B, 0x14, 0xCB, 0xCB, 0x2B, 0x7E}}},
    {&PowerTimeouts::sleepAfter,
     kSleepAfter,
     kSecondsPerMinute,
     kSleepSubgroup,
     {0x29F6C1DB, 0x86DA, 0x48C5, {0x9F, 0xDB, 0xF2, 0xB6, 0x7B, 0x1F, 0x44, 0xDA}}},
    {&PowerTimeouts::hibernateAfter,
     kHibernateAfter,
     kSecondsPerMinute,
     kSleepSubgroup,
     {0x9D7815A6, 0x7EE4, 0x497E, {0x88, 0x88, 0x51, 0x5A, 0x05, 0xF0, 0x23, 0x64}}},
    {&PowerTimeouts::allowWakeTimers,
     kAllowWakeTimers,
     kAsStored,
     kSleepSubgroup,
     {0xBD3B718A, 0x0680, 0x4D9D, {0x8A, 0xB2, 0xE1, 0xD2, 0xB4, 0xAC, 0x80, 0x6D}}},
    {&PowerTimeouts::allowHybridSleep,
     kAllowHybridSleep,
     kAsStored,
     kSleepSubgroup,
     {0x94AC6D29, 0x73CE, 0x41A6, {0x80, 0x9F, 0x63, 0x63, 0xBA, 0x21, 0xB4, 0x7E}}},
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
    if (!ReadSchemeValue(source, scheme, setting.subgroup, setting.setting, value)) return false;
    timeouts->*setting.field = value / setting.schemeUnits;
    return true;
  });
}

uint32_t WritePowerTimeouts(uint32_t mask, uint32_t source, const Guid& scheme,
                            const PowerTimeouts* timeouts) {
  if (timeouts == nullptr) return 0;
  const uint32_t written = ForSelected(mask, source, [&](const Setting& setting) {
    return WriteSchemeValue(source, scheme, setting.subgroup, setting.setting,
                            timeouts->*setting.field * setting.schemeUnits);
  });
  if (written != 0) SetActivePowerScheme(scheme);
  return written;
}

}  // namespace dozewell
