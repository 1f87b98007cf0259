#include "ctl/live_files.h"

#include <cstring>

#include "base/durable_file.h"
#include "base/file.h"
#include "common/machine_identity.h"
#include "common/named_file.h"
#include "common/output_file.h"
#include "common/tool_error.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "prediction/rates/rates_file.h"
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

void RequireNoServiceFile(const std::string& output) {
  const auto live = [](const wchar_t* name) { return PathToSystem(LiveFilePath(name)); };
  RequireNoInput(output, {{"the service's history", live(kHistoryFileName)},
                          {"the service's data file", live(kDataFileName)},
                          {"the service's data file", live(kRatesFileName)}});
}

}  // namespace dozewell::ctl
