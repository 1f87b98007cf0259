#include <io.h>
#include <windows.h>

#include "base/file.h"
#include "base/utf8.h"

namespace dozewell {

std::wstring PathFromSystem(std::string_view name) { return WidenUtf8(name); }

std::string PathToSystem(const std::wstring& path) { return NarrowToUtf8(path); }

File OpenFile(const std::wstring& path, const char* mode) {
  const std::wstring wideMode(mode, mode + std::char_traits<char>::length(mode));
  return File(_wfopen(path.c_str(), wideMode.c_str()));
}

FileFailure WhyFileFailed() {
  // The system's error in the last function of the C runtime that failed.
  switch (_doserrno) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return FileFailure::Missing;
    case ERROR_CRC:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_READ_FAULT:
    case ERROR_IO_DEVICE:
    case ERROR_FILE_CORRUPT:
    case ERROR_DISK_CORRUPT:
      return FileFailure::Broken;
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_DISK_FULL:
      return FileFailure::NoRoom;
    default:
      return FileFailure::Held;
  }
}

int64_t SizeOfFile(std::FILE* file) { return _filelengthi64(_fileno(file)); }

bool FlushFile(std::FILE* file) { return std::fflush(file) == 0 && _commit(_fileno(file)) == 0; }

bool RemoveFile(const std::wstring& path) { return DeleteFileW(path.c_str()) != 0; }

bool ReplaceFileWith(const std::wstring& path, const std::wstring& replacement) {
  return MoveFileExW(replacement.c_str(), path.c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

// ReplaceFileWith has already written the names to the disk when it returns.
bool FlushFolderOf(const std::wstring&) { return true; }

}  // namespace dozewell
