#include <windows.h>
// After windows.h, which it needs.
#include <powrprof.h>

#include <bit>
#include <cstddef>

#include "power/power_capabilities.h"

namespace dozewell {
namespace {

using System = SYSTEM_POWER_CAPABILITIES;

// Some headers call the three fields between FastSystemS4 and DiskSpinDown spare2, so their places
// follow from those of their neighbours.
static_assert(sizeof(System) == sizeof(PowerCapabilities::bytes));
static_assert(offsetof(System, SystemS1) == PowerCapabilities::kS1);
static_assert(offsetof(System, SystemS2) == PowerCapabilities::kS2);
static_assert(offsetof(System, SystemS3) == PowerCapabilities::kS3);
static_assert(offsetof(System, SystemS4) == PowerCapabilities::kS4);
static_assert(offsetof(System, HiberFilePresent) == PowerCapabilities::kHibernationFile);
static_assert(offsetof(System, FastSystemS4) + 1 == PowerCapabilities::kFastStartup);
static_assert(offsetof(System, FastSystemS4) + 2 == PowerCapabilities::kWakeAlarm);
static_assert(offsetof(System, FastSystemS4) + 3 == PowerCapabilities::kModernStandby);
static_assert(offsetof(System, RtcWake) == PowerCapabilities::kTimerWake);
static_assert(PowerSystemHibernate == PowerCapabilities::kStateS4);
static_assert(offsetof(System, DiskSpinDown) == PowerCapabilities::kModernStandby + 1);

}  // namespace

bool ReadPowerCapabilities(PowerCapabilities& capabilities) {
  System system = {};
  if (CallNtPowerInformation(SystemPowerCapabilities, nullptr, 0, &system, sizeof(system)) != 0) {
    return false;
  }
  capabilities.bytes = std::bit_cast<decltype(capabilities.bytes)>(system);
  return true;
}

}  // namespace dozewell
