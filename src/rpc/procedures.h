#ifndef DOZEWELL_RPC_PROCEDURES_H_
#define DOZEWELL_RPC_PROCEDURES_H_

#include <cstdint>

#include "power/power_timeouts.h"

namespace dozewell {

// The procedures that clients call, in the order of the interface. Any thread, many at once. Each
// returns whether it succeeded; a failure brings neither an event nor an exception, leaves outputs
// alone, and is also the answer to a null output.
//
// Timers, masks, sources and schemes are numbers from the wire, which may hold any value: undefined
// ones reach neither driver nor power scheme.

// A time of the calendar as the driver packs it. Each field is cut to the low bits named here.
struct WakeTime {
  int32_t minute;  // 6 bits
  int32_t hour;    // 5
  int32_t day;     // 5
  int32_t month;   // 4
  int32_t year;    // 7, an offset

  bool operator==(const WakeTime&) const = default;
};

bool Ping();

// Whether a timer of the driver is enabled.
bool GetDriverEnabled(bool* enabled);

// Switches the feature on or off, now and for later starts, and the driver's timers with it. False
// when the timers could not be switched, and when the controller could not be built, which is tried
// again at the next resume or start.
bool SetFeatureEnabled(bool enable);

bool GetFeatureEnabled(bool* enabled);

// Arms a timer, 0 or 1, for a time; for a number of minutes, in the relative form.
bool SetWakeTime(uint32_t timer, const WakeTime* wakeTime);
bool SetWakeRaw(uint32_t timer, int32_t count);

// What a timer holds, read as a time and as a count.
bool GetWakeTime(uint32_t timer, WakeTime* wakeTime);
bool GetWakeRaw(uint32_t timer, int32_t* count);

// The active scheme's settings of a mask (see power_timeouts.h); those outside it read as 0. False
// when one setting failed: the others are written all the same, but no output is set.
bool GetPowerSettings(uint32_t mask, uint32_t source, PowerTimeouts* settings);
bool SetPowerSettings(uint32_t mask, uint32_t source, const PowerTimeouts* settings);

// 0 is Balanced, 1 Power saver, 2 High performance; any other scheme has no number.
bool GetActiveScheme(uint32_t* scheme);
bool SetActiveScheme(uint32_t scheme);

// Makes the running controller forget all that was learnt.
bool ResetHistory();

// The predictor's kStrengthName; a running controller hears of it at once. Absent, it reads as 0.
bool SetStrength(int32_t strength);
bool GetStrength(int32_t* strength);

}  // namespace dozewell

#endif  // DOZEWELL_RPC_PROCEDURES_H_
