#include "support/program_data_windows.h"

#include <windows.h>

namespace dozewell::support {
namespace {

constexpr wchar_t kProfileList[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";

}  // namespace

ProgramDataAt::ProgramDataAt(const std::wstring& path)
    : original_(GetValue(kProfileList, L"ProgramData")) {
  SetValue(kProfileList, L"ProgramData", Text(path));
}

ProgramDataAt::~ProgramDataAt() {
  if (original_) SetValue(kProfileList, L"ProgramData", *original_);
}

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace dozewell::support
