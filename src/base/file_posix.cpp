#include <sys/stat.h>

#include <algorithm>

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

int64_t SizeOfFile(std::FILE* file) {
  struct stat status;
  // Unlike Windows, this system opens folders for reading.
  if (fstat(fileno(file), &status) != 0 || S_ISDIR(status.st_mode)) return -1;
  return status.st_size;
}

bool RemoveFile(const std::wstring& path) { return std::remove(PathToSystem(path).c_str()) == 0; }

bool ReplaceFileWith(const std::wstring& path, const std::wstring& replacement) {
  return std::rename(PathToSystem(replacement).c_str(), PathToSystem(path).c_str()) == 0;
}

}  // namespace dozewell
