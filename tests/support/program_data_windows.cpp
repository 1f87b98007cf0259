#include "support/program_data_windows.h"

#include <windows.h>

#include <exception>

namespace dozewell::support {
namespace {

constexpr wchar_t kProfileList[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";

}  // namespace

ProgramDataAt::ProgramDataAt(const std::wstring& path)
    : original_(GetValue(kProfileList, L"ProgramData")) {
  SetValue(kProfileList, L"ProgramData", Text(path));
}

ProgramDataAt::~ProgramDataAt() {
  if (!original_) return;
  try {
    SetValue(kProfileList, L"ProgramData", *original_);
  } catch (...) {
    // The machine is left with a wrong folder, which must not go unnoticed.
    std::terminate();
  }
}

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace dozewell::support
