#include <windows.h>

#include <string>

#include "base/durable_file.h"
#include "base/utf8.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "prediction/rates/rates_file.h"
#include "settings/data_folder.h"
#include "settings/setting_names.h"
#include "setup/empty_key.h"
#include "setup/system_error.h"
#include "setup/system_steps.h"

namespace dozewell::setup {
namespace {

void DeleteLearntFile(const std::wstring& path) {
  if (DeleteFileW(path.c_str()) != 0) return;
  const DWORD error = GetLastError();
  if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) {
    throw SystemError(NarrowToUtf8(path) + ": cannot be deleted", error);
  }
}

void DeleteFolders() {
  std::wstring folder = DataFolderPath();
  for (const wchar_t* const name : {kHistoryFileName, kDataFileName, kRatesFileName}) {
    for (const wchar_t* const suffix : kSideFileSuffixes) DeleteLearntFile(folder + name + suffix);
    DeleteLearntFile(folder + name);
  }
  // A folder that still holds something else stays.
  folder.pop_back();
  RemoveDirectoryW(folder.c_str());
  folder.erase(folder.rfind(L'\\'));
  RemoveDirectoryW(folder.c_str());
}

void DeleteSettings() {
  const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, kCurrentKey);
  if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
    throw SystemError("the settings cannot be deleted", static_cast<uint32_t>(status));
  }
  DeleteProductKeysIfEmpty();
}

}  // namespace

void RemoveLearntData() {
  if (!DataFolderPath().empty()) DeleteFolders();
  DeleteSettings();
}

}  // namespace dozewell::setup
