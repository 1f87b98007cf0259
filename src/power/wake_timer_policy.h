#ifndef DOZEWELL_POWER_WAKE_TIMER_POLICY_H_
#define DOZEWELL_POWER_WAKE_TIMER_POLICY_H_

#include <cstdint>
#include <optional>

namespace dozewell {

// What an administrator's policy says in place of the power scheme's "allow wake timers", in the
// scheme's own numbers, for kPowerSourceAC or kPowerSourceDC. Nothing where none decides. Any
// thread.
std::optional<uint32_t> ReadWakeTimerPolicy(uint32_t source);

}  // namespace dozewell

#endif  // DOZEWELL_POWER_WAKE_TIMER_POLICY_H_
