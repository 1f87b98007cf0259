#include "ctl/settings_text.h"

#include <string_view>

#include "common/format_text.h"
#include "common/plain_text.h"

namespace dozewell::ctl {
namespace {

std::string MachineSection(const MachineIdentity& identity) {
  if (!identity.name && !identity.zone) return {};
  std::string text = "\n[Machine]\n";
  if (identity.name) text += "Name=" + *identity.name + "\n";
  if (identity.zone) text += "Zone=" + *identity.zone + "\n";
  return text;
}

// A value that no key has is a comment, so that its reader finds it as absent as the service does.
std::string SettingLines(const SettingRead& setting) {
  const std::string line = setting.name + "=" + setting.value.value_or("") + "\n";
  if (setting.key) return "# " + *setting.key + "\n" + line;
  return (setting.value ? "# no key has it; the service takes this\n# " : "# no key has it\n# ") +
         line;
}

}  // namespace

std::string SettingsFileText(std::span<const SettingRead> settings,
                             const MachineIdentity& identity) {
  std::string text =
      "# The settings in force, each with the key that it comes from, for dozewell-replay "
      "--settings.\n" +
      MachineSection(identity);
  std::string_view section;
  for (const SettingRead& setting : settings) {
    if (section != setting.section) {
      section = setting.section;
      text.append("\n[").append(section).append("]\n");
    }
    text += SettingLines(setting);
  }
  return text;
}

std::string SettingsTable(std::span<const SettingRead> settings) {
  std::string text;
  std::string_view section;
  for (const SettingRead& setting : settings) {
    if (section != setting.section) {
      text += section.empty() ? "" : "\n";
      section = setting.section;
      text.append(section).append("\n");
    }
    const std::string key = setting.key ? *setting.key : setting.value ? "built in" : "nowhere";
    text += FormatText("  %-33s%-10s", setting.name.c_str(), key.c_str()) +
            PlainText(setting.value.value_or("-"), ' ') + "\n";
  }
  return text;
}

Json SettingsJson(std::span<const SettingRead> settings) {
  Json list = Json::array();
  for (const SettingRead& setting : settings) {
    list.push_back({{"section", setting.section},
                    {"name", setting.name},
                    {"value", OptionalJson(setting.value)},
                    {"key", OptionalJson(setting.key)}});
  }
  return {{"settings", list}};
}

}  // namespace dozewell::ctl
