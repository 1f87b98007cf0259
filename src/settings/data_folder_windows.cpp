#include <shlobj.h>
#include <windows.h>

#include <memory>

#include "settings/data_folder.h"

namespace dozewell {
namespace {

struct TaskMemoryFreer {
  void operator()(wchar_t* text) const { CoTaskMemFree(text); }
};

bool Exists(const std::wstring& path) {
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(path.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return false;
  FindClose(search);
  return true;
}

}  // namespace

std::wstring DataFolderPath() {
  wchar_t* text = nullptr;
  const HRESULT result = SHGetKnownFolderPath(FOLDERID_ProgramData, 0, nullptr, &text);
  const std::unique_ptr<wchar_t, TaskMemoryFreer> programData(text);
  if (FAILED(result)) return {};
  return std::wstring(programData.get()) + L"\\Brevan\\Z7\\";
}

std::wstring GetDataFolder() {
  std::wstring path = DataFolderPath();
  if (path.empty()) return {};
  // A search for a path that ends in a backslash finds nothing.
  const std::wstring folder = path.substr(0, path.size() - 1);
  if (!Exists(folder)) SHCreateDirectoryExW(nullptr, folder.c_str(), nullptr);
  return path;
}

}  // namespace dozewell
