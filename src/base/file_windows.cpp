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

int64_t SizeOfFile(std::FILE* file) { return _filelengthi64(_fileno(file)); }

bool RemoveFile(const std::wstring& path) { return DeleteFileW(path.c_str()) != 0; }

bool ReplaceFileWith(const std::wstring& path, const std::wstring& replacement) {
  return MoveFileExW(replacement.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

}  // namespace dozewell
