#include "fleet/machine_row.h"

#include <algorithm>
#include <iterator>

#include "base/utf8.h"
#include "common/text.h"
#include "fleet/path_parts.h"
#include "prediction/history_file.h"

namespace dozewell::fleet {
namespace {

// The folders that the service's data is in, which a copy of it may still be in.
constexpr std::string_view kFoldersOfService[] = {"Z7", "Brevan", "ProgramData"};

// Those folders, and the drive that they are on, as it is seen from another machine.
bool IsFolderOfService(std::string_view name) {
  return (name.size() == 2 && name.back() == '$') ||
         std::ranges::any_of(kFoldersOfService,
                             [name](std::string_view own) { return EqualIgnoringCase(name, own); });
}

}  // namespace

std::string MachineName(std::string_view path) {
  std::vector<std::string_view> parts = PathParts(path);
  if (parts.empty()) return {};
  const std::string_view file = parts.back();
  if (!EqualIgnoringCase(file, NarrowToUtf8(kHistoryFileName))) {
    return std::string(WithoutExtension(file));
  }
  parts.pop_back();
  const auto folder = std::find_if_not(parts.rbegin(), parts.rend(), IsFolderOfService);
  return std::string(folder != parts.rend() ? *folder : WithoutExtension(file));
}

}  // namespace dozewell::fleet
