#ifndef DOZEWELL_TESTS_FAKES_POWER_FAKE_H_
#define DOZEWELL_TESTS_FAKES_POWER_FAKE_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fakes/call_failer.h"
#include "power/power_capabilities.h"
#include "power/power_scheme.h"
#include "power/power_source.h"
#include "support/calls.h"

namespace dozewell::fakes {

inline constexpr Guid kBalanced = {
    0x381B4222, 0xF694, 0x41F0, {0x96, 0x85, 0xFF, 0x5B, 0xB2, 0x60, 0xDF, 0x2E}};

// A machine that sleeps, hibernates and is woken by timers.
PowerCapabilities EveryCapability();

// The power schemes, the power source and the sleep of a machine. A failing call does nothing and
// answers false.
//
// In texts schemes go by the names balanced, power saver and high performance, settings by display,
// sleep, hibernate, wake timers and hybrid sleep; any other is written as its GUID (a setting's
// after that of its subgroup).
struct Power {
  Guid activeScheme = kBalanced;
  // The schemes' own numbers by scheme, source and setting, such as "balanced AC hibernate". A
  // setting that is not here cannot be read; one that is written comes here.
  std::map<std::string, uint32_t> values;
  uint8_t acLineStatus = kLineOnline;
  // Nothing when the system does not tell. Reading it is neither counted nor noted, nor is the
  // policy.
  std::optional<PowerCapabilities> capabilities = EveryCapability();
  std::optional<uint32_t> wakeTimerPolicy;  // for both sources
  CallFailer failer;                        // counts the calls of every function
  // In order: "get active", "activate balanced", "read balanced AC hibernate", "write balanced AC
  // hibernate 60", "power source" and "suspend".
  Calls calls;
};
extern Power power;

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_POWER_FAKE_H_
