#ifndef DOZEWELL_POWER_SCHEME_SETTINGS_H_
#define DOZEWELL_POWER_SCHEME_SETTINGS_H_

#include "power/power_scheme.h"

namespace dozewell {

// The identifiers of a power scheme's settings that concern sleep.
struct SchemeSetting {
  Guid subgroup;
  Guid setting;
};

inline constexpr Guid kDisplaySubgroup = {
    0x7516B95F, 0xF776, 0x4464, {0x8C, 0x53, 0x06, 0x16, 0x7F, 0x40, 0xCC, 0x99}};
inline constexpr Guid kSleepSubgroup = {
    0x238C9FA8, 0x0AAD, 0x41ED, {0x83, 0xF4, 0x97, 0xBE, 0x24, 0x2C, 0x8F, 0x20}};

inline constexpr SchemeSetting kDisplayOffSetting = {
    kDisplaySubgroup,
    {0x3C0BC021, 0xC8A8, 0x4E07, {0xA9, 0x73, 0x6B, 0x14, 0xCB, 0xCB, 0x2B, 0x7E}}};
inline constexpr SchemeSetting kSleepAfterSetting = {
    kSleepSubgroup, {0x29F6C1DB, 0x86DA, 0x48C5, {0x9F, 0xDB, 0xF2, 0xB6, 0x7B, 0x1F, 0x44, 0xDA}}};
inline constexpr SchemeSetting kHibernateAfterSetting = {
    kSleepSubgroup, {0x9D7815A6, 0x7EE4, 0x497E, {0x88, 0x88, 0x51, 0x5A, 0x05, 0xF0, 0x23, 0x64}}};
inline constexpr SchemeSetting kAllowWakeTimersSetting = {
    kSleepSubgroup, {0xBD3B718A, 0x0680, 0x4D9D, {0x8A, 0xB2, 0xE1, 0xD2, 0xB4, 0xAC, 0x80, 0x6D}}};
// Its values: no timer wakes the machine, every one does, or only those that the system itself
// calls important.
inline constexpr uint32_t kWakeTimersForbidden = 0;
inline constexpr uint32_t kWakeTimersAllowed = 1;
inline constexpr uint32_t kWakeTimersImportantOnly = 2;
inline constexpr SchemeSetting kAllowHybridSleepSetting = {
    kSleepSubgroup, {0x94AC6D29, 0x73CE, 0x41A6, {0x80, 0x9F, 0x63, 0x63, 0xBA, 0x21, 0xB4, 0x7E}}};

}  // namespace dozewell

#endif  // DOZEWELL_POWER_SCHEME_SETTINGS_H_
