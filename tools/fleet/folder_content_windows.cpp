#include <windows.h>

#include <cerrno>
#include <memory>
#include <string_view>

#include "base/file.h"
#include "fleet/folder_content.h"

namespace dozewell::fleet {
namespace {

struct SearchCloser {
  void operator()(void* search) const { FindClose(search); }
};

int ErrorNumber(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DIRECTORY:
      return ENOENT;
    case ERROR_ACCESS_DENIED:
      return EACCES;
    default:
      return EIO;
  }
}

}  // namespace

std::optional<std::vector<FolderEntry>> ContentOfFolder(const std::wstring& path) {
  WIN32_FIND_DATAW found;
  const HANDLE begun = FindFirstFileW(PathInFolder(path, L"*").c_str(), &found);
  if (begun == INVALID_HANDLE_VALUE) {
    errno = ErrorNumber(GetLastError());
    return std::nullopt;
  }
  const std::unique_ptr<void, SearchCloser> search(begun);
  std::vector<FolderEntry> content;
  do {
    const std::wstring_view name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    constexpr DWORD kKind = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    content.push_back(
        {std::wstring(name), (found.dwFileAttributes & kKind) == FILE_ATTRIBUTE_DIRECTORY});
  } while (FindNextFileW(search.get(), &found));
  if (GetLastError() != ERROR_NO_MORE_FILES) {
    errno = ErrorNumber(GetLastError());
    return std::nullopt;
  }
  return content;
}

}  // namespace dozewell::fleet
