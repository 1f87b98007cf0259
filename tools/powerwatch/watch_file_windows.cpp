#include <windows.h>

#include "powerwatch/watch_file.h"

namespace dozewell::powerwatch {

WatchFile::WatchFile(const std::wstring& path, uint32_t& error) {
  // The account may only append. Written through, since the machine may sleep right after a line.
  const HANDLE file = CreateFileW(
      path.c_str(), FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, FILE_SHARE_READ, nullptr,
      OPEN_EXISTING, FILE_FLAG_WRITE_THROUGH | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  LARGE_INTEGER size = {};
  error = file == INVALID_HANDLE_VALUE ? GetLastError() : 0;
  if (error != 0) return;
  file_.reset(file);
  if (GetFileSizeEx(file, &size) == 0) error = GetLastError();
  size_ = static_cast<uint64_t>(size.QuadPart);
}

uint32_t WatchFile::Append(const std::string& text) const {
  DWORD written = 0;
  const auto size = static_cast<DWORD>(text.size());
  if (WriteFile(file_.get(), text.data(), size, &written, nullptr) == 0) return GetLastError();
  return written == size ? ERROR_SUCCESS : ERROR_DISK_FULL;
}

}  // namespace dozewell::powerwatch
