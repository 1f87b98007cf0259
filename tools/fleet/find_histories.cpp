#include "fleet/find_histories.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/file.h"
#include "common/history_io.h"
#include "common/json.h"
#include "common/messages.h"
#include "common/named_file.h"
#include "common/text.h"
#include "common/tool_error.h"
#include "fleet/folder_content.h"

namespace dozewell::fleet {
namespace {

FoundHistory Found(const std::string& path, const std::string& reason = "") {
  constexpr bool kOnlyAscii = true;
  const std::string text = Json(path).dump(-1, ' ', kOnlyAscii, Json::error_handler_t::replace);
  return {Json::parse(text).get<std::string>(), path, reason};
}

bool IsHistoryName(const std::string& name) {
  constexpr std::string_view kSuffix = ".dat";
  const std::string_view text = name;
  return IsCsvName(name) || (text.size() >= kSuffix.size() &&
                             EqualIgnoringCase(text.substr(text.size() - kSuffix.size()), kSuffix));
}

// Nothing when the folder cannot be listed; `reason` says why then.
std::vector<FolderEntry> ContentOrReason(const std::wstring& folder, std::string& reason) {
  errno = 0;
  auto content = ContentOfFolder(folder);
  if (!content) reason = WithReason("cannot be listed");
  return content.value_or(std::vector<FolderEntry>());
}

void FindIn(const std::wstring& given, std::vector<FoundHistory>& found) {
  std::vector<std::wstring> folders = {given};
  while (!folders.empty()) {
    const std::wstring folder = std::move(folders.back());
    folders.pop_back();
    std::string reason;
    for (const FolderEntry& entry : ContentOrReason(folder, reason)) {
      const std::wstring path = PathInFolder(folder, entry.name.c_str());
      if (entry.isFolder) {
        folders.push_back(path);
      } else if (const std::string name = PathToSystem(path); IsHistoryName(name)) {
        found.push_back(Found(name));
      }
    }
    if (reason.empty()) continue;
    const std::string name = PathToSystem(folder);
    if (folder == given) throw ToolError(std::string(name).append(": ").append(reason));
    found.push_back(Found(name, reason));
  }
}

}  // namespace

std::vector<FoundHistory> FindHistories(std::span<const std::string> folders) {
  std::vector<FoundHistory> found;
  for (const std::string& name : folders) {
    if (name.empty()) throw ToolError("FOLDER: the name is empty");
    const std::wstring path = PathFromSystem(name);
    if (LookUp(path).kind == FileKind::Regular) {
      found.push_back(Found(name));
    } else {
      FindIn(path, found);
    }
  }
  std::ranges::sort(found, [](const FoundHistory& left, const FoundHistory& right) {
    return std::tie(left.shown, left.path, left.reason) <
           std::tie(right.shown, right.path, right.reason);
  });
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

}  // namespace dozewell::fleet
