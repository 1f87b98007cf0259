#include <windows.h>
// Needs windows.h before it.
#include <powrprof.h>

#include <cstring>
#include <string>

#include "stand_ins/import.h"
#include "stand_ins/service_record.h"
#include "support/shutdown_privilege_windows.h"

// The functions that powrprof.dll exports: the machine's power schemes and its way to sleep.

namespace dozewell::lab {
namespace {

struct PowerSetting {
  const char* name;
  GUID subgroup;
  GUID setting;
};

constexpr GUID kSleep = {
    0x238C9FA8, 0x0AAD, 0x41ED, {0x83, 0xF4, 0x97, 0xBE, 0x24, 0x2C, 0x8F, 0x20}};
constexpr GUID kDisplay = {
    0x7516B95F, 0xF776, 0x4464, {0x8C, 0x53, 0x06, 0x16, 0x7F, 0x40, 0xCC, 0x99}};

constexpr PowerSetting kPowerSettingTable[kPowerSettings] = {
    {"display",
     kDisplay,
     {0x3C0BC021, 0xC8A8, 0x4E07, {0xA9, 0x73, 0x6B, 0x14, 0xCB, 0xCB, 0x2B, 0x7E}}},
    {"sleep",
     kSleep,
     {0x29F6C1DB, 0x86DA, 0x48C5, {0x9F, 0xDB, 0xF2, 0xB6, 0x7B, 0x1F, 0x44, 0xDA}}},
    {"hibernate",
     kSleep,
     {0x9D7815A6, 0x7EE4, 0x497E, {0x88, 0x88, 0x51, 0x5A, 0x05, 0xF0, 0x23, 0x64}}},
    {"wake-timers",
     kSleep,
     {0xBD3B718A, 0x0680, 0x4D9D, {0x8A, 0xB2, 0xE1, 0xD2, 0xB4, 0xAC, 0x80, 0x6D}}},
    {"hybrid-sleep",
     kSleep,
     {0x94AC6D29, 0x73CE, 0x41A6, {0x80, 0x9F, 0x63, 0x63, 0xBA, 0x21, 0xB4, 0x7E}}},
};

bool SameGuid(const void* left, const void* right) {
  return std::memcmp(left, right, sizeof(GUID)) == 0;
}

PowerScheme* FindScheme(const GUID* id) {
  for (PowerScheme& scheme : Machine->schemes) {
    if (id != nullptr && SameGuid(scheme.id.data(), id)) return &scheme;
  }
  return nullptr;
}

struct SchemeValue {
  std::string name;              // of its scheme and setting
  std::atomic<uint32_t>* value;  // null when there is no such scheme or setting
};

SchemeValue FindValue(size_t source, const GUID* scheme, const GUID* subgroup,
                      const GUID* setting) {
  PowerScheme* const found = FindScheme(scheme);
  if (found == nullptr || subgroup == nullptr || setting == nullptr) return {"unknown", nullptr};
  for (size_t i = 0; i < kPowerSettings; ++i) {
    if (SameGuid(&kPowerSettingTable[i].subgroup, subgroup) &&
        SameGuid(&kPowerSettingTable[i].setting, setting)) {
      return {
          Format("%d %s", static_cast<int>(found - Machine->schemes), kPowerSettingTable[i].name),
          &found->values[source][i]};
    }
  }
  return {"unknown", nullptr};
}

constexpr const char* kSourceNames[kPowerSources] = {"AC", "DC"};

DWORD ReadValueIndex(size_t place, size_t source, const GUID* scheme, const GUID* subgroup,
                     const GUID* setting, DWORD* index) {
  if (const uint32_t error = CountCall(place)) return error;
  const SchemeValue found = FindValue(source, scheme, subgroup, setting);
  if (found.value == nullptr || index == nullptr) return ERROR_FILE_NOT_FOUND;
  *index = *found.value;
  Record("scheme", Format("read %s %s %lu", found.name.c_str(), kSourceNames[source], *index));
  return ERROR_SUCCESS;
}

DWORD WriteValueIndex(size_t place, size_t source, const GUID* scheme, const GUID* subgroup,
                      const GUID* setting, DWORD index) {
  if (const uint32_t error = CountCall(place)) return error;
  const SchemeValue found = FindValue(source, scheme, subgroup, setting);
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
  const auto* const found = dozewell::lab::FindScheme(scheme);
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
