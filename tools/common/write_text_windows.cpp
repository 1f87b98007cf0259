#include <io.h>
#include <windows.h>

#include <algorithm>
#include <bit>
#include <cstddef>

#include "base/utf8.h"
#include "common/write_text.h"

namespace dozewell {
namespace {

// Older systems take less than 64 KB at once.
constexpr size_t kMostAtOnce = 8192;

// Null when the stream leads elsewhere than to a console.
HANDLE ConsoleOf(std::FILE* stream) {
  const auto handle = std::bit_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != 0 ? handle : nullptr;
}

bool WriteToConsole(HANDLE console, std::wstring_view text) {
  while (!text.empty()) {
    size_t size = std::min(text.size(), kMostAtOnce);
    // A character that takes two must not be cut.
    if (size < text.size() && IS_HIGH_SURROGATE(text[size - 1])) --size;
    DWORD written = 0;
    if (WriteConsoleW(console, text.data(), static_cast<DWORD>(size), &written, nullptr) == 0 ||
        written == 0) {
      return false;
    }
    text.remove_prefix(written);
  }
  return true;
}

}  // namespace

bool WriteText(std::FILE* stream, std::string_view text) {
  if (HANDLE const console = ConsoleOf(stream); console != nullptr) {
    return std::fflush(stream) == 0 && WriteToConsole(console, WidenUtf8(text));
  }
  return std::fwrite(text.data(), 1, text.size(), stream) == text.size() &&
         std::fflush(stream) == 0;
}

}  // namespace dozewell
