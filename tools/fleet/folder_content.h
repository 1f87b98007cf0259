#ifndef DOZEWELL_FLEET_FOLDER_CONTENT_H_
#define DOZEWELL_FLEET_FOLDER_CONTENT_H_

#include <optional>
#include <string>
#include <vector>

namespace dozewell::fleet {

struct FolderEntry {
  std::wstring name;
  bool isFolder;  // a link to a folder is none, so nobody goes in circles
};

// What is in a folder, in any order, without the folder itself and its parent. Nothing, with errno
// set, when the folder cannot be listed.
std::optional<std::vector<FolderEntry>> ContentOfFolder(const std::wstring& path);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_FOLDER_CONTENT_H_
