#include "ctl/live_files.h"

#include "base/file.h"
#include "common/tool_error.h"
#include "settings/data_folder.h"

namespace dozewell::ctl {

std::wstring LiveFilePath(const wchar_t* name) {
  // Not GetDataFolder, which would create the folder with the user as its owner.
  const std::wstring folder = DataFolderPath();
  if (folder.empty()) throw ToolError("Windows does not say where the data folder is");
  return PathInFolder(folder, name);
}

}  // namespace dozewell::ctl
