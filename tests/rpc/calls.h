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

// One call as it is on the wire.
struct Call {
  Procedure procedure;
  const char* name;
  Bytes arguments;
  // What a service without driver, power schemes and a running controller answers.
  Bytes results;
  // Where in the arguments enumerations are.
  std::vector<size_t> enumsAt;
};

// A well-formed call of each procedure, in the order of their numbers. The feature is off and the
// strength is 55 before and after all of them.
extern const std::vector<Call> kCalls;

// A call's arguments or results from their parts.
Bytes LongBytes(int32_t number);
Bytes Joined(const Bytes& first, const Bytes& second);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_CALLS_H_
