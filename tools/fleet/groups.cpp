#include "fleet/groups.h"

#include <algorithm>
#include <vector>

#include "common/text.h"
#include "common/tool_error.h"
#include "fleet/path_parts.h"

namespace dozewell::fleet {
namespace {

std::string InSmallLetters(std::string_view text) {
  std::string small(text);
  std::ranges::transform(small, small.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return small;
}

}  // namespace

Groups::Groups(std::string_view text, const std::string& name) : other_(kNoGroup) {
  int number = 0;
  for (const std::string_view line : SplitLines(text)) {
    const std::string where = name + ": line " + std::to_string(++number) + ": ";
    const std::string_view content = TrimBlanks(line);
    if (content.empty() || content.front() == '#') continue;
    const size_t comma = content.find(',');
    const std::string_view machine = TrimBlanks(content.substr(0, comma));
    const std::string_view group =
        comma == std::string_view::npos ? "" : TrimBlanks(content.substr(comma + 1));
    if (machine.empty() || group.empty()) throw ToolError(where + "not NAME,GROUP");
    const auto [entry, isNew] = groups_.emplace(InSmallLetters(machine), group);
    if (!isNew && entry->second != group) {
      throw ToolError(where + std::string(machine) + " is in " + entry->second + " already");
    }
  }
}

const std::string& Groups::Of(std::string_view path) const {
  const std::vector<std::string_view> parts = PathParts(path);
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
    for (const std::string_view name : {*part, WithoutExtension(*part)}) {
      const auto found = groups_.find(InSmallLetters(name));
      if (found != groups_.end()) return found->second;
    }
  }
  return other_;
}

}  // namespace dozewell::fleet
