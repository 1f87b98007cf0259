#include "ctl/live_files.h"

#include "base/file.h"
#include "common/named_file.h"
#include "common/output_file.h"
#include "common/tool_error.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "prediction/rates/rates_file.h"
#include "settings/data_folder.h"

namespace dozewell::ctl {

std::wstring LiveFilePath(const wchar_t* name) {
  // Not GetDataFolder, which would create the folder with the user as its owner.
  const std::wstring folder = DataFolderPath();
  if (folder.empty()) throw ToolError("Windows does not say where the data folder is");
  return PathInFolder(folder, name);
}

void RequireNoServiceFile(const std::string& output) {
  const auto live = [](const wchar_t* name) { return PathToSystem(LiveFilePath(name)); };
  RequireNoInput(output, {{"the service's history", live(kHistoryFileName)},
                          {"the service's data file", live(kDataFileName)},
                          {"the service's data file", live(kRatesFileName)}});
}

}  // namespace dozewell::ctl
