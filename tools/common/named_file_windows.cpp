#include <windows.h>

#include <cerrno>

#include "base/file.h"
#include "base/system_handle.h"
#include "common/named_file.h"

namespace dozewell {
namespace {

bool HasAttribute(const std::wstring& path, DWORD attribute) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

bool IsLink(const std::wstring& path) { return HasAttribute(path, FILE_ATTRIBUTE_REPARSE_POINT); }
bool IsReadOnly(const std::wstring& path) { return HasAttribute(path, FILE_ATTRIBUTE_READONLY); }

// The path of an open file, or `path` where the system does not say it.
std::wstring FinalPath(HANDLE file, const std::wstring& path) {
  std::wstring target(GetFinalPathNameByHandleW(file, nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
  const auto size = static_cast<DWORD>(target.size());
  const DWORD length = GetFinalPathNameByHandleW(file, target.data(), size, FILE_NAME_NORMALIZED);
  if (length == 0 || length >= size) return path;
  target.resize(length);
  return target;
}

}  // namespace

NamedFile LookUp(const std::wstring& path) {
  NamedFile found;
  found.path = path;
  // This works on files that others hold, and on folders.
  const HANDLE opened = CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return found;
  const SystemHandle file(opened);
  BY_HANDLE_FILE_INFORMATION status;
  if (GetFileType(opened) != FILE_TYPE_DISK || !GetFileInformationByHandle(opened, &status)) {
    found.kind = FileKind::Other;
    return found;
  }
  const bool isFolder = (status.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  found.kind = isFolder ? FileKind::Other : FileKind::Regular;
  found.volume = status.dwVolumeSerialNumber;
  found.number = uint64_t{status.nFileIndexHigh} << 32 | status.nFileIndexLow;
  if (IsLink(path)) found.path = FinalPath(opened, path);
  return found;
}

bool MoveOver(const std::wstring& path, const std::wstring& replacement) {
  constexpr ULONGLONG kPatience = 5000;
  constexpr DWORD kPause = 10;
  const ULONGLONG start = GetTickCount64();
  while (!ReplaceFileWith(path, replacement)) {
    const DWORD error = GetLastError();
    const bool mayBeHeld = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
    if (!mayBeHeld || IsReadOnly(path) || GetTickCount64() - start > kPatience) {
      errno = EACCES;
      return false;
    }
    Sleep(kPause);
  }
  return true;
}

}  // namespace dozewell
