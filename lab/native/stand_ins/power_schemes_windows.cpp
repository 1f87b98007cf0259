#include <windows.h>
// Needs windows.h before it.
#include <powrprof.h>

#include <cstring>

#include "shared/power_schemes.h"
#include "stand_ins/import.h"
#include "stand_ins/service_record.h"
#include "support/shutdown_privilege_windows.h"

// The functions that powrprof.dll exports: the machine's power schemes and its way to sleep.

namespace dozewell::lab {
namespace {

constexpr const char* kSourceNames[kPowerSources] = {"AC", "DC"};

DWORD ReadValueIndex(size_t place, size_t source, const GUID* scheme, const GUID* subgroup,
                     const GUID* setting, DWORD* index) {
  if (const uint32_t error = CountCall(place)) return error;
  const PowerValue found = FindPowerValue(*Machine, source, scheme, subgroup, setting);
  if (found.value == nullptr || index == nullptr) return ERROR_FILE_NOT_FOUND;
  *index = *found.value;
  Record("scheme", Format("read %s %s %lu", found.name.c_str(), kSourceNames[source], *index));
  return ERROR_SUCCESS;
}

DWORD WriteValueIndex(size_t place, size_t source, const GUID* scheme, const GUID* subgroup,
                      const GUID* setting, DWORD index) {
  if (const uint32_t error = CountCall(place)) return error;
  const PowerValue found = FindPowerValue(*Machine, source, scheme, subgroup, setting);
  if (found.value == nullptr) return ERROR_FILE_NOT_FOUND;
  *found.value = index;
  Record("scheme", Format("write %s %s %lu", found.name.c_str(), kSourceNames[source], index));
  return ERROR_SUCCESS;
}

}  // namespace
}  // namespace dozewell::lab

using dozewell::lab::CountCall;
using dozewell::lab::Format;
using dozewell::lab::Machine;
using dozewell::lab::Record;
using dozewell::lab::SystemCallPlace;

DWORD WINAPI PowerGetActiveScheme(HKEY, GUID** scheme) {
  if (const uint32_t error = CountCall(SystemCallPlace("PowerGetActiveScheme"))) return error;
  // The caller frees it.
  *scheme = static_cast<GUID*>(LocalAlloc(0, sizeof(GUID)));
  if (*scheme == nullptr) return ERROR_NOT_ENOUGH_MEMORY;
  std::memcpy(*scheme, Machine->schemes[Machine->activeScheme].id.data(), sizeof(GUID));
  return ERROR_SUCCESS;
}

DWORD WINAPI PowerSetActiveScheme(HKEY, const GUID* scheme) {
  if (const uint32_t error = CountCall(SystemCallPlace("PowerSetActiveScheme"))) return error;
  const auto* const found = dozewell::lab::FindPowerScheme(*Machine, scheme);
  if (found == nullptr) return ERROR_FILE_NOT_FOUND;
  Machine->activeScheme = static_cast<uint32_t>(found - Machine->schemes);
  Record("scheme", Format("activate %u", Machine->activeScheme.load()));
  return ERROR_SUCCESS;
}

DWORD WINAPI PowerReadACValueIndex(HKEY, const GUID* scheme, const GUID* subgroup,
                                   const GUID* setting, DWORD* index) {
  return dozewell::lab::ReadValueIndex(SystemCallPlace("PowerReadACValueIndex"), 0, scheme,
                                       subgroup, setting, index);
}

DWORD WINAPI PowerReadDCValueIndex(HKEY, const GUID* scheme, const GUID* subgroup,
                                   const GUID* setting, DWORD* index) {
  return dozewell::lab::ReadValueIndex(SystemCallPlace("PowerReadDCValueIndex"), 1, scheme,
                                       subgroup, setting, index);
}

DWORD WINAPI PowerWriteACValueIndex(HKEY, const GUID* scheme, const GUID* subgroup,
                                    const GUID* setting, DWORD index) {
  return dozewell::lab::WriteValueIndex(SystemCallPlace("PowerWriteACValueIndex"), 0, scheme,
                                        subgroup, setting, index);
}

DWORD WINAPI PowerWriteDCValueIndex(HKEY, const GUID* scheme, const GUID* subgroup,
                                    const GUID* setting, DWORD index) {
  return dozewell::lab::WriteValueIndex(SystemCallPlace("PowerWriteDCValueIndex"), 1, scheme,
                                        subgroup, setting, index);
}

LONG WINAPI CallNtPowerInformation(POWER_INFORMATION_LEVEL level, void*, ULONG, void* output,
                                   ULONG size) {
  constexpr uint64_t kTicksPerMillisecond = 10'000;
  constexpr LONG kNotImplemented = static_cast<LONG>(0xC0000002);
  if (const uint32_t error = CountCall(SystemCallPlace("CallNtPowerInformation"))) {
    return static_cast<LONG>(error);
  }
  uint64_t ticks = 0;
  const void* answer = &ticks;
  ULONG answerSize = sizeof(ticks);
  switch (level) {
    case LastSleepTime:
      ticks = Machine->lastSleepMs * kTicksPerMillisecond;
      break;
    case LastWakeTime:
      ticks = Machine->lastWakeMs * kTicksPerMillisecond;
      break;
    case SystemPowerCapabilities:
      answer = Machine->capabilities.data();
      answerSize = static_cast<ULONG>(Machine->capabilities.size());
      break;
    default:
      return kNotImplemented;
  }
  if (size != answerSize) return kNotImplemented;
  std::memcpy(output, answer, size);
  return 0;
}

BOOLEAN WINAPI SetSuspendState(BOOLEAN hibernate, BOOLEAN force, BOOLEAN noWakeEvents) {
  Record("suspend", Format("SetSuspendState %d %d %d", hibernate, force, noWakeEvents));
  uint32_t error = CountCall(SystemCallPlace("SetSuspendState"));
  if (error == 0 && !dozewell::support::ShutdownPrivilegeIsEnabled()) {
    error = ERROR_PRIVILEGE_NOT_HELD;
    Record("failed", Format("SetSuspendState %u", error));
  }
  SetLastError(error);
  return error == 0;
}
