#include "power/hibernate_after.h"

#include "diagnostics/event_writer.h"
#include "power/power_scheme.h"
#include "power/power_source.h"
#include "power/power_timeouts.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

void WriteHA(uint32_t source, uint32_t minutes, const wchar_t* failureText) {
  PowerTimeouts timeouts = {};
  timeouts.hibernateAfter = minutes;
  Guid scheme = {};
  if (!GetActivePowerScheme(scheme) ||
      WritePowerTimeouts(kHibernateAfter, source, scheme, &timeouts) != kHibernateAfter) {
    LogServiceEvent(failureText, kUnspecifiedError, kEventError);
  }
}

void RestoreHA(uint32_t source, const wchar_t* cachedName, const wchar_t* failureText) {
  uint32_t minutes = 0;
  if (ReadSetting(cachedName, minutes, true)) WriteHA(source, minutes, failureText);
}

}  // namespace

bool ReadHA(uint32_t source, uint32_t& minutes) {
  PowerTimeouts timeouts = {};
  Guid scheme = {};
  if (!GetActivePowerScheme(scheme) ||
      ReadPowerTimeouts(kHibernateAfter, source, scheme, &timeouts) != kHibernateAfter) {
    return false;
  }
  minutes = timeouts.hibernateAfter;
  return true;
}

std::optional<uint32_t> ReadCurrentHA() {
  uint8_t lineStatus = kLineUnknown;
  if (!ReadAcLineStatus(lineStatus)) return std::nullopt;
  uint32_t minutes = 0;
  const bool read = ReadHA(lineStatus == kLineOffline ? kPowerSourceDC : kPowerSourceAC, minutes);
  return read ? std::optional(minutes) : std::nullopt;
}

void SetPassedHA(int32_t minutes) {
  if (minutes < 0) return;
  const uint32_t ha = minutes == 0 ? 1 : static_cast<uint32_t>(minutes);
  WriteHA(kPowerSourceAC, ha, L"Failed to set passed HA value for AC");
  WriteHA(kPowerSourceDC, ha, L"Failed to set passed HA value for DC");
}

void RestoreCachedHA() {
  RestoreHA(kPowerSourceAC, kCachedHAForACName, L"Failed to set cached HA value for AC");
  RestoreHA(kPowerSourceDC, kCachedHAForDCName, L"Failed to set cached HA value for DC");
}

}  // namespace dozewell
