#include <windows.h>

#include <iterator>

#include "base/utf8.h"
#include "ctl/check/message_file.h"

namespace dozewell::ctl {

uint32_t FindEventText(const std::string& path) {
  // The identifier of every event of the service.
  constexpr DWORD kEvent = 0;
  const HMODULE file = LoadLibraryExW(WidenUtf8(path).c_str(), nullptr,
                                      LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
  if (file == nullptr) return GetLastError();
  wchar_t text[64];
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_IGNORE_INSERTS, file, kEvent, 0,
                     text, static_cast<DWORD>(std::size(text)), nullptr);
  const uint32_t error = length == 0 ? GetLastError() : 0;
  FreeLibrary(file);
  return error;
}

}  // namespace dozewell::ctl
