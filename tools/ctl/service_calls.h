#ifndef DOZEWELL_CTL_SERVICE_CALLS_H_
#define DOZEWELL_CTL_SERVICE_CALLS_H_

#include <cstdint>

#include "rpc/procedures.h"

namespace dozewell::ctl {

enum class CallOutcome {
  Done,         // the service did what it was asked to
  Refused,      // it answered that it did not
  Unreachable,  // it did not answer
};

struct CallResult {
  CallOutcome outcome;
  uint32_t status;  // Unreachable: the RPC runtime's error code

  bool IsDone() const { return outcome == CallOutcome::Done; }
  bool operator==(const CallResult&) const = default;
};

// The service's procedures (see rpc/procedures.h for what each does), called over its pipe. Outputs
// are set when the call is done and left alone otherwise. One thread at a time; a call waits until
// the service has answered.
CallResult CallPing();
CallResult CallGetDriverEnabled(bool& enabled);
CallResult CallSetFeatureEnabled(bool enable);
CallResult CallGetFeatureEnabled(bool& enabled);
CallResult CallSetWakeTime(uint32_t timer, const WakeTime& wakeTime);
CallResult CallSetWakeRaw(uint32_t timer, int32_t count);
CallResult CallGetWakeTime(uint32_t timer, WakeTime& wakeTime);
CallResult CallGetWakeRaw(uint32_t timer, int32_t& count);
CallResult CallGetPowerSettings(uint32_t mask, uint32_t source, PowerTimeouts& settings);
CallResult CallSetPowerSettings(uint32_t mask, uint32_t source, const PowerTimeouts& settings);
CallResult CallGetActiveScheme(uint32_t& scheme);
CallResult CallSetActiveScheme(uint32_t scheme);
CallResult CallResetHistory();
CallResult CallSetStrength(int32_t strength);
CallResult CallGetStrength(int32_t& strength);

// Whether any of these was called.
bool HasCalledService();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_SERVICE_CALLS_H_
