#ifndef DOZEWELL_TESTS_RPC_CALLS_H_
#define DOZEWELL_TESTS_RPC_CALLS_H_

#include <cstdint>
#include <vector>

#include "rpc/packets.h"

namespace dozewell {

// The numbers of the service's procedures.
enum Procedure : uint16_t {
  kPing,
  kGetDriverEnabled,
  kSetFeatureEnabled,
  kGetFeatureEnabled,
  kSetWakeTime,
  kSetWakeRaw,
  kGetWakeTime,
  kGetWakeRaw,
  kGetPowerSettings,
  kSetPowerSettings,
  kGetActiveScheme,
  kSetActiveScheme,
  kResetHistory,
  kSetStrength,
  kGetStrength,
  kProcedures,
};

// One call on the wire.
struct Call {
  Procedure procedure;
  const char* name;
  Bytes arguments;
  // The answer of a service without driver, power schemes and a running controller.
  Bytes results;
  // The offsets of the enumerations in the arguments.
  std::vector<size_t> enumsAt;
};

// A well-formed call of each procedure, in the order of their numbers. The feature is off and the
// strength is 55 before and after all of them.
extern const std::vector<Call> kCalls;

// Put a call's arguments or results together.
Bytes LongBytes(int32_t number);
Bytes Joined(const Bytes& first, const Bytes& second);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_CALLS_H_
