#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <string_view>

#include "base/file.h"
#include "fleet/folder_content.h"

namespace dozewell::fleet {
namespace {

struct FolderCloser {
  void operator()(DIR* folder) const { closedir(folder); }
};

bool IsFolder(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::optional<std::vector<FolderEntry>> ContentOfFolder(const std::wstring& path) {
  const std::string name = PathToSystem(path);
  const std::unique_ptr<DIR, FolderCloser> folder(opendir(name.c_str()));
  if (!folder) return std::nullopt;
  std::vector<FolderEntry> content;
  for (errno = 0; const dirent* entry = readdir(folder.get()); errno = 0) {
    const std::string_view found = entry->d_name;
    if (found == "." || found == "..") continue;
    // Some file systems do not say in the folder what is what.
    const bool isFolder = entry->d_type == DT_UNKNOWN ? IsFolder(name + '/' + entry->d_name)
                                                      : entry->d_type == DT_DIR;
    content.push_back({PathFromSystem(found), isFolder});
  }
  if (errno != 0) return std::nullopt;
  return content;
}

}  // namespace dozewell::fleet
