#include <time.h>
#include <windows.h>
// After windows.h, which it needs.
#include <powrprof.h>
#include <shlobj.h>

#include <cstring>
#include <string_view>

#include "shared/machine_state.h"
#include "shared/power_schemes.h"
#include "support/program_imports.h"

// What dozewellctl sees of the machine's power settings: the same as the service. It is not
// recorded or counted, since both are for what the service does.

namespace dozewell::lab {
namespace {

MachineState* TheMachine = nullptr;

bool Fails(std::string_view function) { return function == TheMachine->failsForClient; }

DWORD ReadValue(size_t source, const GUID* scheme, const GUID* subgroup, const GUID* setting,
                DWORD* value) {
  const PowerValue found = FindPowerValue(*TheMachine, source, scheme, subgroup, setting);
  if (found.value == nullptr || value == nullptr) return ERROR_FILE_NOT_FOUND;
  *value = *found.value;
  return ERROR_SUCCESS;
}

DWORD WriteValue(size_t source, const GUID* scheme, const GUID* subgroup, const GUID* setting,
                 DWORD value) {
  const PowerValue found = FindPowerValue(*TheMachine, source, scheme, subgroup, setting);
  if (found.value == nullptr) return ERROR_FILE_NOT_FOUND;
  const auto place = FindPowerSetting(setting);
  if (place && TheMachine->settingPolicies[source][*place] != 0) {
    return ERROR_ACCESS_DISABLED_BY_POLICY;
  }
  *found.value = value;
  return ERROR_SUCCESS;
}

__time64_t GetTime(__time64_t* time) {
  const __time64_t now = TheMachine->clock;
  if (time != nullptr) *time = now;
  return now;
}

DWORD WINAPI GetZone(DYNAMIC_TIME_ZONE_INFORMATION* zone) {
  return Fails("GetDynamicTimeZoneInformation") ? TIME_ZONE_ID_INVALID
                                                : GetDynamicTimeZoneInformation(zone);
}

HRESULT WINAPI GetFolder(const KNOWNFOLDERID& folder, DWORD flags, HANDLE user, wchar_t** path) {
  if (!Fails("SHGetKnownFolderPath")) return SHGetKnownFolderPath(folder, flags, user, path);
  *path = nullptr;
  return E_FAIL;
}

BOOL WINAPI QueryConfiguration(SC_HANDLE service, DWORD level, BYTE* buffer, DWORD size,
                               DWORD* needed) {
  constexpr std::wstring_view kKept(L"SeChangeNotifyPrivilege\0", 25);
  constexpr DWORD kSize = sizeof(SERVICE_REQUIRED_PRIVILEGES_INFOW) + 25 * sizeof(wchar_t);
  if (level != SERVICE_CONFIG_REQUIRED_PRIVILEGES_INFO || TheMachine->givesUpPrivileges == 0) {
    return QueryServiceConfig2W(service, level, buffer, size, needed);
  }
  *needed = kSize;
  if (size < kSize) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  }
  auto* const names =
      reinterpret_cast<wchar_t*>(buffer + sizeof(SERVICE_REQUIRED_PRIVILEGES_INFOW));
  std::memcpy(names, kKept.data(), 25 * sizeof(wchar_t));
  reinterpret_cast<SERVICE_REQUIRED_PRIVILEGES_INFOW*>(buffer)->pmszRequiredPrivileges = names;
  return TRUE;
}

// Wine knows a link to a folder by its name, but always opens what it leads to. So a link that is
// opened itself is kept in mind until the next file is opened.
HANDLE TheLink = nullptr;

bool IsLink(const wchar_t* path) {
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

HANDLE WINAPI OpenFileOrLink(const wchar_t* path, DWORD access, DWORD sharing,
                             SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                             HANDLE likeFile) {
  const bool opensLink = (flags & FILE_FLAG_OPEN_REPARSE_POINT) != 0 && IsLink(path);
  const HANDLE file = CreateFileW(path, access, sharing, security, disposition, flags, likeFile);
  TheLink = opensLink ? file : nullptr;
  return file;
}

BOOL WINAPI DescribeFile(HANDLE file, BY_HANDLE_FILE_INFORMATION* information) {
  if (GetFileInformationByHandle(file, information) == FALSE) return FALSE;
  if (file == TheLink) information->dwFileAttributes |= FILE_ATTRIBUTE_REPARSE_POINT;
  return TRUE;
}

struct StandIn {
  std::string_view name;
  void* function;
};

// From now on the program has the machine's clock, what the test makes of the service's
// configuration, links to folders, and the failure that the test wants.
bool EnterClient() {
  TheMachine = MapMachineState();
  if (TheMachine == nullptr) return false;
  const StandIn standIns[] = {
      {"_time64", reinterpret_cast<void*>(GetTime)},
      {"QueryServiceConfig2W", reinterpret_cast<void*>(QueryConfiguration)},
      {"GetDynamicTimeZoneInformation", reinterpret_cast<void*>(GetZone)},
      {"CreateFileW", reinterpret_cast<void*>(OpenFileOrLink)},
      {"GetFileInformationByHandle", reinterpret_cast<void*>(DescribeFile)},
      {"SHGetKnownFolderPath", reinterpret_cast<void*>(GetFolder)},
  };
  support::VisitImports(GetModuleHandleW(nullptr),
                        [&standIns](const char* name, uint64_t& address) {
                          for (const StandIn& standIn : standIns) {
                            if (standIn.name == name)
                              support::ReplaceAddress(address, standIn.function);
                          }
                        });
  return true;
}

}  // namespace
}  // namespace dozewell::lab

using dozewell::lab::Fails;
using dozewell::lab::TheMachine;

LONG WINAPI CallNtPowerInformation(POWER_INFORMATION_LEVEL level, void*, ULONG, void* output,
                                   ULONG size) {
  constexpr LONG kNotImplemented = static_cast<LONG>(0xC0000002);
  if (level != SystemPowerCapabilities || size != TheMachine->capabilities.size()) {
    return kNotImplemented;
  }
  std::memcpy(output, TheMachine->capabilities.data(), size);
  return 0;
}

DWORD WINAPI PowerSettingAccessCheck(POWER_DATA_ACCESSOR accessor, const GUID* setting) {
  bool isOverruled = TheMachine->schemePolicy != 0;
  if (accessor != ACCESS_ACTIVE_SCHEME) {
    const auto place = dozewell::lab::FindPowerSetting(setting);
    if (!place) return ERROR_FILE_NOT_FOUND;
    isOverruled = TheMachine->settingPolicies[accessor][*place] != 0;
  }
  return isOverruled ? ERROR_ACCESS_DISABLED_BY_POLICY : ERROR_SUCCESS;
}

DWORD WINAPI PowerGetActiveScheme(HKEY, GUID** scheme) {
  if (Fails("PowerGetActiveScheme")) return ERROR_FILE_NOT_FOUND;
  // The caller frees it.
  *scheme = static_cast<GUID*>(LocalAlloc(0, sizeof(GUID)));
  if (*scheme == nullptr) return ERROR_NOT_ENOUGH_MEMORY;
  std::memcpy(*scheme, TheMachine->schemes[TheMachine->activeScheme].id.data(), sizeof(GUID));
  return ERROR_SUCCESS;
}

DWORD WINAPI PowerSetActiveScheme(HKEY, const GUID* scheme) {
  const auto* const found = dozewell::lab::FindPowerScheme(*TheMachine, scheme);
  if (found == nullptr) return ERROR_FILE_NOT_FOUND;
  TheMachine->activeScheme = static_cast<uint32_t>(found - TheMachine->schemes);
  return ERROR_SUCCESS;
}

DWORD WINAPI PowerReadACValueIndex(HKEY, const GUID* scheme, const GUID* subgroup,
                                   const GUID* setting, DWORD* value) {
  return dozewell::lab::ReadValue(0, scheme, subgroup, setting, value);
}

DWORD WINAPI PowerReadDCValueIndex(HKEY, const GUID* scheme, const GUID* subgroup,
                                   const GUID* setting, DWORD* value) {
  if (Fails("PowerReadDCValueIndex")) return ERROR_FILE_NOT_FOUND;
  return dozewell::lab::ReadValue(1, scheme, subgroup, setting, value);
}

DWORD WINAPI PowerWriteACValueIndex(HKEY, const GUID* scheme, const GUID* subgroup,
                                    const GUID* setting, DWORD value) {
  return dozewell::lab::WriteValue(0, scheme, subgroup, setting, value);
}

DWORD WINAPI PowerWriteDCValueIndex(HKEY, const GUID* scheme, const GUID* subgroup,
                                    const GUID* setting, DWORD value) {
  return dozewell::lab::WriteValue(1, scheme, subgroup, setting, value);
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  return reason != DLL_PROCESS_ATTACH || dozewell::lab::EnterClient();
}
