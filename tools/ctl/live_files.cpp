#include "ctl/live_files.h"

#include <cstring>

#include "base/durable_file.h"
#include "base/file.h"
#include "common/machine_identity.h"
#include "common/tool_error.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/tracker_data.h"
#include "settings/data_folder.h"

namespace dozewell::ctl {

std::wstring LiveFilePath(const wchar_t* name) {
  // Not GetDataFolder, which would create the folder with the user as its owner.
  const std::wstring folder = DataFolderPath();
  if (folder.empty()) throw ToolError("Windows does not say where the data folder is");
  return PathInFolder(folder, name);
}

std::optional<tm> TimeOfSavedData() {
  const std::wstring folder = DataFolderPath();
  if (folder.empty()) return std::nullopt;
  const FileContent content = ReadDurableFile(PathInFolder(folder, kDataFileName));
  TrackerData header;
  if (content.failure || content.bytes.size() < sizeof(header)) return std::nullopt;
  std::memcpy(&header, content.bytes.data(), sizeof(header));
  return TimeOfLast(header);
}

}  // namespace dozewell::ctl
