#ifndef DOZEWELL_FLEET_GROUPS_H_
#define DOZEWELL_FLEET_GROUPS_H_

#include <map>
#include <string>
#include <string_view>

namespace dozewell::fleet {

// The group of machines that no line of the file is about.
inline constexpr const char* kNoGroup = "other machines";

// Which machine is in which group. Without a file there is one group of all.
class Groups {
 public:
  Groups() = default;
  // The text of a file with lines NAME,GROUP. Throws ToolError, with `name` and the line, for any
  // other line and for a name that is in two groups. Blank lines and those after # are skipped.
  Groups(std::string_view text, const std::string& name);

  // The group of the history with this path: that of the last of its folders, its file or its
  // file without extension that is a NAME. The case of ASCII letters does not count.
  const std::string& Of(std::string_view path) const;

 private:
  std::map<std::string, std::string, std::less<>> groups_;
  std::string other_ = "all machines";
};

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_GROUPS_H_
