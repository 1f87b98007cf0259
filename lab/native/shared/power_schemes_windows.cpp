#include <windows.h>

#include <cstring>

#include "shared/power_schemes.h"

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

}  // namespace

PowerScheme* FindPowerScheme(MachineState& machine, const void* scheme) {
  for (PowerScheme& each : machine.schemes) {
    if (scheme != nullptr && SameGuid(each.id.data(), scheme)) return &each;
  }
  return nullptr;
}

std::optional<size_t> FindPowerSetting(const void* setting) {
  if (setting == nullptr) return std::nullopt;
  for (size_t i = 0; i < kPowerSettings; ++i) {
    if (SameGuid(&kPowerSettingTable[i].setting, setting)) return i;
  }
  return std::nullopt;
}

std::optional<size_t> FindPowerSetting(const void* subgroup, const void* setting) {
  const auto found = FindPowerSetting(setting);
  const bool isThere =
      found && subgroup != nullptr && SameGuid(&kPowerSettingTable[*found].subgroup, subgroup);
  return isThere ? found : std::nullopt;
}

PowerValue FindPowerValue(MachineState& machine, size_t source, const void* scheme,
                          const void* subgroup, const void* setting) {
  PowerScheme* const found = FindPowerScheme(machine, scheme);
  const auto place = FindPowerSetting(subgroup, setting);
  if (found == nullptr || !place) return {"unknown", nullptr};
  return {std::to_string(found - machine.schemes) + " " + kPowerSettingTable[*place].name,
          &found->values[source][*place]};
}

}  // namespace dozewell::lab
