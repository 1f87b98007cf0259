#ifndef DOZEWELL_REPLAY_SETTINGS_FILE_H_
#define DOZEWELL_REPLAY_SETTINGS_FILE_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dozewell::replay {

// The text of the settings that are used when the user names none. Null-terminated.
extern const char* const kDefaultSettings;

// What a settings file holds: keys and values under section names, all without blanks around them.
class SettingsFile {
 public:
  // Throws ToolError with `name` and the line for a line that is no blank line, comment, section
  // or key=value, and for a key before the first section.
  SettingsFile(std::string_view text, const std::string& name);

  // The value of a key: the last one if there are several, empty if there is none. The case of
  // names does not count, as in the registry.
  std::string Value(std::string_view section, std::string_view key) const;
  bool Has(std::string_view section, std::string_view key) const;

  // What the user knows the file as.
  const std::string& Name() const { return name_; }

 private:
  struct Entry {
    std::string section;
    std::string key;
    std::string value;
  };
  const Entry* Find(std::string_view section, std::string_view key) const;

  std::string name_;
  std::vector<Entry> entries_;
};

// The settings in the file of this name, which may be a CSV history that has them in it, or the
// default ones. Throws ToolError.
SettingsFile LoadSettings(const std::optional<std::string>& name);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_SETTINGS_FILE_H_
