#ifndef DOZEWELL_POWER_POWER_TIMEOUTS_H_
#define DOZEWELL_POWER_POWER_TIMEOUTS_H_

#include <cstdint>

#include "power/power_scheme.h"

namespace dozewell {

// The power scheme's settings that concern sleep. The first three are timeouts in minutes, where 0
// stands for never; the others are the scheme's own numbers.
struct PowerTimeouts {
  uint32_t displayOff;
  uint32_t sleepAfter;
  uint32_t hibernateAfter;
  uint32_t allowWakeTimers;
  uint32_t allowHybridSleep;

  bool operator==(const PowerTimeouts&) const = default;
};

// One bit for each field of the record, to be combined into a mask.
inline constexpr uint32_t kDisplayOff = 0x01;
inline constexpr uint32_t kSleepAfter = 0x02;
inline constexpr uint32_t kHibernateAfter = 0x04;
inline constexpr uint32_t kAllowWakeTimers = 0x08;
inline constexpr uint32_t kAllowHybridSleep = 0x10;

// Both give the mask of those selected settings that could be read or written, 0 for a null record
// or a source other than kPowerSourceAC and kPowerSourceDC. Any thread.

// Reads the selected settings of a scheme; fields that were not read stay as they are. Seconds that
// make no whole minute are dropped.
uint32_t ReadPowerTimeouts(uint32_t mask, uint32_t source, const Guid& scheme,
                           PowerTimeouts* timeouts);

// Writes the selected settings into a scheme and, when at least one was written, makes that scheme
// the active one, so that the change takes effect. Minutes wrap when their seconds exceed 32 bits.
uint32_t WritePowerTimeouts(uint32_t mask, uint32_t source, const Guid& scheme,
                            const PowerTimeouts* timeouts);

}  // namespace dozewell

#endif  // DOZEWELL_POWER_POWER_TIMEOUTS_H_
