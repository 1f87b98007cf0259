#include <windows.h>
// After windows.h, which they need.
#include <powrprof.h>
#include <winevt.h>

// The system looks for a library that a program imports beside the program first, unless it is one
// of those that it always has in memory. These two are not, and anybody may put a program and a
// library of such a name into a download folder. So the functions are not imported: these here have
// their names, and pass on to those of the library in the system's own folder.

namespace {

constexpr wchar_t kPower[] = L"powrprof.dll";
constexpr wchar_t kEventLog[] = L"wevtapi.dll";

// Null, with the system's last error, when the library or the function is missing.
template <typename Function>
Function* Find(const wchar_t* library, const char* name) {
  const HMODULE loaded = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (loaded == nullptr) return nullptr;
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(loaded, name)));
}

// The answer of a function that says by its result why it failed.
template <typename Function, typename... Arguments>
DWORD PassOn(Function* function, Arguments... arguments) {
  return function == nullptr ? ERROR_PROC_NOT_FOUND : function(arguments...);
}

// The answer of one that tells it by the last error.
template <typename Function, typename... Arguments>
auto PassOnOrFail(Function* function, Arguments... arguments) -> decltype(function(arguments...)) {
  if (function != nullptr) return function(arguments...);
  SetLastError(ERROR_PROC_NOT_FOUND);
  return {};
}

}  // namespace

extern "C" {

DWORD WINAPI PowerGetActiveScheme(HKEY root, GUID** scheme) {
  static const auto function = Find<decltype(PowerGetActiveScheme)>(kPower, "PowerGetActiveScheme");
  return PassOn(function, root, scheme);
}

DWORD WINAPI PowerSetActiveScheme(HKEY root, const GUID* scheme) {
  static const auto function = Find<decltype(PowerSetActiveScheme)>(kPower, "PowerSetActiveScheme");
  return PassOn(function, root, scheme);
}

DWORD WINAPI PowerReadACValueIndex(HKEY root, const GUID* scheme, const GUID* subgroup,
                                   const GUID* setting, DWORD* value) {
  static const auto function =
      Find<decltype(PowerReadACValueIndex)>(kPower, "PowerReadACValueIndex");
  return PassOn(function, root, scheme, subgroup, setting, value);
}

DWORD WINAPI PowerReadDCValueIndex(HKEY root, const GUID* scheme, const GUID* subgroup,
                                   const GUID* setting, DWORD* value) {
  static const auto function =
      Find<decltype(PowerReadDCValueIndex)>(kPower, "PowerReadDCValueIndex");
  return PassOn(function, root, scheme, subgroup, setting, value);
}

DWORD WINAPI PowerWriteACValueIndex(HKEY root, const GUID* scheme, const GUID* subgroup,
                                    const GUID* setting, DWORD value) {
  static const auto function =
      Find<decltype(PowerWriteACValueIndex)>(kPower, "PowerWriteACValueIndex");
  return PassOn(function, root, scheme, subgroup, setting, value);
}

DWORD WINAPI PowerWriteDCValueIndex(HKEY root, const GUID* scheme, const GUID* subgroup,
                                    const GUID* setting, DWORD value) {
  static const auto function =
      Find<decltype(PowerWriteDCValueIndex)>(kPower, "PowerWriteDCValueIndex");
  return PassOn(function, root, scheme, subgroup, setting, value);
}

DWORD WINAPI PowerSettingAccessCheck(POWER_DATA_ACCESSOR accessor, const GUID* setting) {
  static const auto function =
      Find<decltype(PowerSettingAccessCheck)>(kPower, "PowerSettingAccessCheck");
  return PassOn(function, accessor, setting);
}

LONG WINAPI CallNtPowerInformation(POWER_INFORMATION_LEVEL level, void* input, ULONG inputSize,
                                   void* output, ULONG outputSize) {
  constexpr LONG kNotImplemented = static_cast<LONG>(0xC0000002);
  static const auto function =
      Find<decltype(CallNtPowerInformation)>(kPower, "CallNtPowerInformation");
  return function == nullptr ? kNotImplemented
                             : function(level, input, inputSize, output, outputSize);
}

EVT_HANDLE WINAPI EvtQuery(EVT_HANDLE session, const wchar_t* path, const wchar_t* query,
                           DWORD flags) {
  static const auto function = Find<decltype(EvtQuery)>(kEventLog, "EvtQuery");
  return PassOnOrFail(function, session, path, query, flags);
}

EVT_HANDLE WINAPI EvtSubscribe(EVT_HANDLE session, HANDLE signal, const wchar_t* path,
                               const wchar_t* query, EVT_HANDLE bookmark, void* context,
                               EVT_SUBSCRIBE_CALLBACK callback, DWORD flags) {
  static const auto function = Find<decltype(EvtSubscribe)>(kEventLog, "EvtSubscribe");
  return PassOnOrFail(function, session, signal, path, query, bookmark, context, callback, flags);
}

BOOL WINAPI EvtNext(EVT_HANDLE results, DWORD size, EVT_HANDLE* events, DWORD timeout, DWORD flags,
                    DWORD* returned) {
  static const auto function = Find<decltype(EvtNext)>(kEventLog, "EvtNext");
  return PassOnOrFail(function, results, size, events, timeout, flags, returned);
}

BOOL WINAPI EvtRender(EVT_HANDLE context, EVT_HANDLE fragment, DWORD flags, DWORD size,
                      void* buffer, DWORD* used, DWORD* properties) {
  static const auto function = Find<decltype(EvtRender)>(kEventLog, "EvtRender");
  return PassOnOrFail(function, context, fragment, flags, size, buffer, used, properties);
}

BOOL WINAPI EvtClose(EVT_HANDLE handle) {
  static const auto function = Find<decltype(EvtClose)>(kEventLog, "EvtClose");
  return PassOnOrFail(function, handle);
}

}  // extern "C"
