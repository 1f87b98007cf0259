#include <windows.h>

#include <string>

#include "base/durable_file.h"
#include "base/utf8.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "prediction/rates/rates_file.h"
#include "settings/data_folder.h"
#include "settings/setting_names.h"
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

void DeleteKeyIfEmpty(const wchar_t* path) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  DWORD keys = 1;
  DWORD values = 1;
  RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr,
                   nullptr, nullptr, nullptr);
  RegCloseKey(key);
  if (keys == 0 && values == 0) RegDeleteKeyW(HKEY_LOCAL_MACHINE, path);
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
  DeleteKeyIfEmpty(kProductKey);
  DeleteKeyIfEmpty(kVendorKey);
}

}  // namespace

void RemoveLearntData() {
  if (!DataFolderPath().empty()) DeleteFolders();
  DeleteSettings();
}

}  // namespace dozewell::setup
