#include "fleet/path_parts.h"

#include <algorithm>
#include <cstddef>

namespace dozewell::fleet {

std::vector<std::string_view> PathParts(std::string_view path) {
  // Both systems' separators, so that a result from one machine means the same on another.
  constexpr std::string_view kSeparators = "/\\";
  std::vector<std::string_view> parts;
  for (size_t begin = 0; begin <= path.size();) {
    const size_t end = std::min(path.find_first_of(kSeparators, begin), path.size());
    if (end > begin) parts.push_back(path.substr(begin, end - begin));
    begin = end + 1;
  }
  return parts;
}

std::string_view WithoutExtension(std::string_view name) {
  return name.substr(0, name.find_last_of('.'));
}

}  // namespace dozewell::fleet
