#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "base/file.h"
#include "base/utf8.h"

namespace dozewell {

std::wstring PathFromSystem(std::string_view name) {
  std::wstring path = WidenUtf8(name);
  for (wchar_t& c : path) {
    if (c == L'\\') {
      c = static_cast<wchar_t>(kEscapedByte + L'\\');
    } else if (c == L'/') {
      c = L'\\';
    }
  }
  return path;
}

std::string PathToSystem(const std::wstring& path) {
  std::wstring name = path;
  std::replace(name.begin(), name.end(), L'\\', L'/');
  return NarrowToUtf8(name);
}

File OpenFile(const std::wstring& path, const char* mode) {
  return File(std::fopen(PathToSystem(path).c_str(), mode));
}

FileFailure WhyFileFailed() {
  switch (errno) {
    case ENOENT:
    case ENOTDIR:
      return FileFailure::Missing;
    case EIO:
      return FileFailure::Broken;
    case ENOSPC:
    case EDQUOT:
      return FileFailure::NoRoom;
    default:
      return FileFailure::Held;
  }
}

int64_t SizeOfFile(std::FILE* file) {
  struct stat status;
  // Unlike Windows, this system opens folders for reading.
  if (fstat(fileno(file), &status) != 0 || S_ISDIR(status.st_mode)) return -1;
  return status.st_size;
}

bool FlushFile(std::FILE* file) { return std::fflush(file) == 0 && fsync(fileno(file)) == 0; }

bool RemoveFile(const std::wstring& path) { return std::remove(PathToSystem(path).c_str()) == 0; }

bool ReplaceFileWith(const std::wstring& path, const std::wstring& replacement) {
  return std::rename(PathToSystem(replacement).c_str(), PathToSystem(path).c_str()) == 0;
}

bool FlushFolderOf(const std::wstring& path) {
  const size_t end = path.rfind(L'\\');
  const std::wstring folder = end == std::wstring::npos ? L"." : path.substr(0, end + 1);
  const int descriptor = open(PathToSystem(folder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool flushed = fsync(descriptor) == 0;
  return close(descriptor) == 0 && flushed;
}

}  // namespace dozewell
