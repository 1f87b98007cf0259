#include "ctl/fakes/check_fake.h"

#include "base/utf8.h"
#include "ctl/check/message_file.h"
#include "ctl/fakes/client_fake.h"
#include "ctl/guid_text.h"
#include "ctl/pipe_server.h"
#include "ctl/power_policy.h"
#include "ctl/registry_value.h"
#include "fakes/settings_fake.h"
#include "settings/setting_names.h"

namespace dozewell {
namespace fakes {

CheckedMachine checked;

namespace {

constexpr uint32_t kEverything = 0x1F01FF;
constexpr uint32_t kReading = 0x1200A9;
constexpr const char* kProgram = "C:\\Program Files\\Dozewell\\DozewellService.exe";

std::string ValueName(const wchar_t* key, const wchar_t* name) {
  const std::string path = NarrowToUtf8(key);
  return path.substr(path.rfind('\\') + 1) + " " + NarrowToUtf8(name);
}

std::optional<bool> IsPolicy(const std::string& name) {
  if (!checked.policies) return std::nullopt;
  return checked.policies->contains(name);
}

}  // namespace

ctl::PathAccess SafePath(const std::string& path) {
  ctl::PathAccess safe;
  safe.path = path;
  safe.access = {
      0,
      "S-1-5-18",
      false,
      {{"S-1-5-18", kEverything}, {"S-1-5-32-544", kEverything}, {"S-1-5-32-545", kReading}}};
  return safe;
}

CheckedMachine::CheckedMachine()
    : numbers({{"Power HiberbootEnabled", 0}}),
      texts({{"Dozewell Service EventMessageFile", kProgram}}),
      configuration{0,
                    ctl::kStartsByItself,
                    "\"" + std::string(kProgram) + "\"",
                    "LocalSystem",
                    true,
                    std::vector<int64_t>{60000, 300000, 900000},
                    std::vector<std::string>{}},
      pipe{0, "S-1-5-18", false, {{"S-1-5-18", kEverything}, {"S-1-5-32-544", kEverything}}},
      paths({{kProgram, SafePath(kProgram)}}) {}

}  // namespace fakes

using fakes::checked;

namespace ctl {

std::optional<bool> IsSettingUnderPolicy(uint32_t source, const Guid& setting) {
  return fakes::IsPolicy((source == kPowerSourceAC ? "AC " : "DC ") + GuidText(setting));
}

std::optional<bool> IsActiveSchemeUnderPolicy() { return fakes::IsPolicy("scheme"); }

std::optional<uint32_t> ReadMachineNumber(const wchar_t* key, const wchar_t* name) {
  const auto found = checked.numbers.find(fakes::ValueName(key, name));
  return found == checked.numbers.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string> ReadMachineText(const wchar_t* key, const wchar_t* name) {
  const auto found = checked.texts.find(fakes::ValueName(key, name));
  return found == checked.texts.end() ? std::nullopt : std::optional(found->second);
}

std::optional<uint32_t> ReadMachineValueSize(const wchar_t* key, const wchar_t* name) {
  const std::wstring path(key);
  const fakes::Key& found = path.starts_with(kCurrentKey)    ? fakes::settings.current
                            : path.starts_with(kBrandingKey) ? fakes::settings.branding
                                                             : fakes::settings.defaults;
  const auto sizeIn = [](const auto& values, const auto& wanted) {
    const auto value = values.find(wanted);
    return value == values.end() ? std::nullopt
                                 : std::optional(static_cast<uint32_t>(value->second.data.size()));
  };
  if (path.find(L"Predictors") == std::wstring::npos) return sizeIn(found.values, name);
  return sizeIn(found.predictorValues,
                std::pair<std::string, std::string>(kPredictorSection, NarrowToUtf8(name)));
}

std::optional<SystemVersion> ReadSystemVersion() { return checked.version; }

std::optional<bool> IsAdministrator() { return checked.isAdministrator; }

std::optional<Zone> ReadZone() { return checked.zone; }

ServiceConfiguration ReadServiceConfiguration() { return checked.configuration; }

ServiceToken ReadServiceToken(uint32_t) { return checked.token; }

void* PipeConnection() { return nullptr; }

AccessList ReadAccessList(void*) { return checked.pipe; }

PathAccess ReadPathAccess(const std::wstring& path) {
  const std::string name = NarrowToUtf8(path);
  const auto found = checked.paths.find(name);
  if (found != checked.paths.end()) return found->second;
  PathAccess missing;
  missing.path = name;
  missing.error = kErrorNoFile;
  return missing;
}

uint32_t FindEventText(const std::string&) { return checked.eventTextError; }

}  // namespace ctl
}  // namespace dozewell
