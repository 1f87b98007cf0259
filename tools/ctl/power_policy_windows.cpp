#include <windows.h>
// After windows.h, which it needs.
#include <powrprof.h>

#include <bit>

#include "ctl/power_policy.h"

namespace dozewell::ctl {
namespace {

std::optional<bool> IsOverruled(POWER_DATA_ACCESSOR accessor, const GUID* setting) {
  switch (PowerSettingAccessCheck(accessor, setting)) {
    case ERROR_SUCCESS:
      return false;
    case ERROR_ACCESS_DISABLED_BY_POLICY:
      return true;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::optional<bool> IsSettingUnderPolicy(uint32_t source, const Guid& setting) {
  const GUID id = std::bit_cast<GUID>(setting);
  return IsOverruled(
      source == kPowerSourceAC ? ACCESS_AC_POWER_SETTING_INDEX : ACCESS_DC_POWER_SETTING_INDEX,
      &id);
}

std::optional<bool> IsActiveSchemeUnderPolicy() {
  return IsOverruled(ACCESS_ACTIVE_SCHEME, nullptr);
}

}  // namespace dozewell::ctl
