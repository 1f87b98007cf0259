#include "fakes/power_fake.h"

#include <cstddef>
#include <cstdio>

#include "fakes/journal.h"
#include "power/power_source.h"
#include "power/suspend.h"
#include "power/wake_timer_policy.h"

namespace dozewell {
namespace fakes {

PowerCapabilities EveryCapability() {
  PowerCapabilities capabilities;
  for (const size_t has :
       {PowerCapabilities::kS3, PowerCapabilities::kS4, PowerCapabilities::kHibernationFile,
        PowerCapabilities::kFastStartup, PowerCapabilities::kWakeAlarm}) {
    capabilities.bytes[has] = 1;
  }
  capabilities.bytes[PowerCapabilities::kTimerWake] = PowerCapabilities::kStateS4;
  return capabilities;
}

Power power;

namespace {

struct Name {
  const char* guid;
  const char* name;
};

constexpr Name kSchemes[] = {
    {"{381B4222-F694-41F0-9685-FF5BB260DF2E}", "balanced"},
    {"{A1841308-3541-4FAB-BC81-F71556F20B4A}", "power saver"},
    {"{8C5E7FDA-E8BF-4A96-9A85-A6E23A8C635C}", "high performance"},
};

constexpr Name kSettings[] = {
    {"{7516B95F-F776-4464-8C53-06167F40CC99}{3C0BC021-C8A8-4E07-A973-6B14CBCB2B7E}", "display"},
    {"{238C9FA8-0AAD-41ED-83F4-97BE242C8F20}{29F6C1DB-86DA-48C5-9FDB-F2B67B1F44DA}", "sleep"},
    {"{238C9FA8-0AAD-41ED-83F4-97BE242C8F20}{9D7815A6-7EE4-497E-8888-515A05F02364}", "hibernate"},
    {"{238C9FA8-0AAD-41ED-83F4-97BE242C8F20}{BD3B718A-0680-4D9D-8AB2-E1D2B4AC806D}", "wake timers"},
    {"{238C9FA8-0AAD-41ED-83F4-97BE242C8F20}{94AC6D29-73CE-41A6-809F-6363BA21B47E}",
     "hybrid sleep"},
};

std::string GuidText(const Guid& guid) {
  char text[39];
  std::snprintf(text, sizeof(text), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                guid.data1, guid.data2, guid.data3, guid.data4[0], guid.data4[1], guid.data4[2],
                guid.data4[3], guid.data4[4], guid.data4[5], guid.data4[6], guid.data4[7]);
  return text;
}

template <size_t N>
std::string NameOf(const std::string& guid, const Name (&names)[N]) {
  for (const Name& name : names) {
    if (guid == name.guid) return name.name;
  }
  return guid;
}

std::string ValueName(uint32_t source, const Guid& scheme, const Guid& subgroup,
                      const Guid& setting) {
  return NameOf(GuidText(scheme), kSchemes) + (source == kPowerSourceAC ? " AC " : " DC ") +
         NameOf(GuidText(subgroup) + GuidText(setting), kSettings);
}

bool PowerCallFails(const std::string& call) {
  power.calls.push_back(call);
  journal.push_back("power: " + call);
  return power.failer.Fails();
}

}  // namespace
}  // namespace fakes

using fakes::power;

bool GetActivePowerScheme(Guid& scheme) {
  if (fakes::PowerCallFails("get active")) return false;
  scheme = power.activeScheme;
  return true;
}

bool SetActivePowerScheme(const Guid& scheme) {
  if (fakes::PowerCallFails("activate " +
                            fakes::NameOf(fakes::GuidText(scheme), fakes::kSchemes))) {
    return false;
  }
  power.activeScheme = scheme;
  return true;
}

bool ReadSchemeValue(uint32_t source, const Guid& scheme, const Guid& subgroup, const Guid& setting,
                     uint32_t& value) {
  const std::string name = fakes::ValueName(source, scheme, subgroup, setting);
  const bool fails = fakes::PowerCallFails("read " + name);
  const auto found = power.values.find(name);
  if (fails || found == power.values.end()) return false;
  value = found->second;
  return true;
}

bool WriteSchemeValue(uint32_t source, const Guid& scheme, const Guid& subgroup,
                      const Guid& setting, uint32_t value) {
  const std::string name = fakes::ValueName(source, scheme, subgroup, setting);
  if (fakes::PowerCallFails("write " + name + " " + std::to_string(value))) return false;
  power.values[name] = value;
  return true;
}

bool ReadAcLineStatus(uint8_t& status) {
  if (fakes::PowerCallFails("power source")) return false;
  status = power.acLineStatus;
  return true;
}

bool SuspendSystem() { return !fakes::PowerCallFails("suspend"); }

bool ReadPowerCapabilities(PowerCapabilities& capabilities) {
  if (power.capabilities) capabilities = *power.capabilities;
  return power.capabilities.has_value();
}

std::optional<uint32_t> ReadWakeTimerPolicy(uint32_t) { return power.wakeTimerPolicy; }

}  // namespace dozewell
