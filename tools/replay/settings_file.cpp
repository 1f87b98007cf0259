#include "replay/settings_file.h"

#include "common/embedded_settings.h"
#include "common/history_io.h"
#include "common/input_file.h"
#include "common/text.h"
#include "common/tool_error.h"

namespace dozewell::replay {

SettingsFile::SettingsFile(std::string_view text, const std::string& name) : name_(name) {
  std::optional<std::string_view> section;
  int lineNumber = 0;
  for (std::string_view untrimmed : SplitLines(text)) {
    ++lineNumber;
    const std::string where = name + ": line " + std::to_string(lineNumber) + ": ";
    const std::string_view line = TrimBlanks(untrimmed);
    if (line.empty() || line.front() == '#' || line.front() == ';') continue;
    if (line.front() == '[' && line.back() == ']') {
      section = TrimBlanks(line.substr(1, line.size() - 2));
      continue;
    }
    const size_t equals = line.find('=');
    if (line.front() == '[' || equals == 0 || equals == std::string_view::npos) {
      throw ToolError(where + "neither [section] nor key=value: " + std::string(line));
    }
    if (!section) throw ToolError(where + "a key before any [section]: " + std::string(line));
    entries_.push_back({std::string(*section), std::string(TrimBlanks(line.substr(0, equals))),
                        std::string(TrimBlanks(line.substr(equals + 1)))});
  }
}

const SettingsFile::Entry* SettingsFile::Find(std::string_view section,
                                              std::string_view key) const {
  const Entry* found = nullptr;
  for (const Entry& entry : entries_) {
    if (EqualIgnoringCase(entry.section, section) && EqualIgnoringCase(entry.key, key)) {
      found = &entry;
    }
  }
  return found;
}

std::string SettingsFile::Value(std::string_view section, std::string_view key) const {
  const Entry* const found = Find(section, key);
  return found == nullptr ? "" : found->value;
}

bool SettingsFile::Has(std::string_view section, std::string_view key) const {
  return Find(section, key) != nullptr;
}

SettingsFile LoadSettings(const std::optional<std::string>& name) {
  if (!name) return SettingsFile(kDefaultSettings, "default settings");
  const std::vector<unsigned char> content = ReadInput(*name);
  if (!IsCsvName(*name)) return SettingsFile(AsText(content), *name);
  const std::string settings = EmbeddedSettings(AsText(content));
  if (settings.empty()) throw ToolError(*name + ": a CSV history without settings in it");
  return SettingsFile(settings, *name);
}

}  // namespace dozewell::replay
