#ifndef DOZEWELL_FLEET_FIND_HISTORIES_H_
#define DOZEWELL_FLEET_FIND_HISTORIES_H_

#include <span>
#include <string>
#include <vector>

namespace dozewell::fleet {

// A history that was found, or a folder that cannot be looked into.
struct FoundHistory {
  std::string shown;   // the path in results: what is not UTF-8 is U+FFFD
  std::string path;    // as the user would write it
  std::string reason;  // why there is nothing to read; empty for a history

  bool operator==(const FoundHistory&) const = default;
};

// The histories in these folders, at any depth: files whose names end in ".dat" or ".csv". What is
// given may be such a file itself. They are sorted by the bytes of their paths as shown, and none
// is there twice. Throws ToolError for something given that cannot be looked into.
std::vector<FoundHistory> FindHistories(std::span<const std::string> folders);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_FIND_HISTORIES_H_
