#include <windows.h>

#include "base/system_handle.h"
#include "ctl/check/system_facts.h"

namespace dozewell::ctl {

// Other functions tell each program the version that its manifest names.
std::optional<SystemVersion> ReadSystemVersion() {
  using Function = LONG WINAPI(OSVERSIONINFOW*);
  const HMODULE library = GetModuleHandleW(L"ntdll.dll");
  if (library == nullptr) return std::nullopt;
  auto* const read = reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(library, "RtlGetVersion")));
  OSVERSIONINFOW version = {};
  version.dwOSVersionInfoSize = sizeof(version);
  if (read == nullptr || read(&version) != 0) return std::nullopt;
  return SystemVersion{version.dwMajorVersion, version.dwMinorVersion, version.dwBuildNumber};
}

std::optional<bool> IsAdministrator() {
  HANDLE opened = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) return std::nullopt;
  const SystemHandle token(opened);
  TOKEN_ELEVATION elevation = {};
  DWORD size = 0;
  if (GetTokenInformation(token.get(), TokenElevation, &elevation, sizeof(elevation), &size) == 0) {
    return std::nullopt;
  }
  return elevation.TokenIsElevated != 0;
}

}  // namespace dozewell::ctl
