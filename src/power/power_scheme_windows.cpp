#include <windows.h>
// After windows.h, which it needs.
#include <powrprof.h>

#include <bit>

#include "power/power_scheme.h"

namespace dozewell {
namespace {

GUID ToSystem(const Guid& guid) { return std::bit_cast<GUID>(guid); }

}  // namespace

bool GetActivePowerScheme(Guid& scheme) {
  GUID* active = nullptr;
  if (PowerGetActiveScheme(nullptr, &active) != ERROR_SUCCESS) return false;
  scheme = std::bit_cast<Guid>(*active);
  LocalFree(active);
  return true;
}

bool SetActivePowerScheme(const Guid& scheme) {
  const GUID id = ToSystem(scheme);
  return PowerSetActiveScheme(nullptr, &id) == ERROR_SUCCESS;
}

bool ReadSchemeValue(uint32_t source, const Guid& scheme, const Guid& subgroup, const Guid& setting,
                     uint32_t& value) {
  const GUID schemeId = ToSystem(scheme);
  const GUID subgroupId = ToSystem(subgroup);
  const GUID settingId = ToSystem(setting);
  DWORD index = 0;
  const DWORD status =
      source == kPowerSourceAC
          ? PowerReadACValueIndex(nullptr, &schemeId, &subgroupId, &settingId, &index)
          : PowerReadDCValueIndex(nullptr, &schemeId, &subgroupId, &settingId, &index);
  if (status != ERROR_SUCCESS) return false;
  value = index;
  return true;
}

bool WriteSchemeValue(uint32_t source, const Guid& scheme, const Guid& subgroup,
                      const Guid& setting, uint32_t value) {
  const GUID schemeId = ToSystem(scheme);
  const GUID subgroupId = ToSystem(subgroup);
  const GUID settingId = ToSystem(setting);
  const DWORD status =
      source == kPowerSourceAC
          ? PowerWriteACValueIndex(nullptr, &schemeId, &subgroupId, &settingId, value)
          : PowerWriteDCValueIndex(nullptr, &schemeId, &subgroupId, &settingId, value);
  return status == ERROR_SUCCESS;
}

}  // namespace dozewell
