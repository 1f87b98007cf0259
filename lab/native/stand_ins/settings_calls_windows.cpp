#include <windows.h>

#include <cstring>
#include <string>

#include "shared/fields.h"
#include "stand_ins/import.h"
#include "stand_ins/service_record.h"

// Records the settings that the service writes and deletes, and counts those that it reads. The
// registry itself answers.

namespace dozewell::lab {
namespace {

LSTATUS WINAPI QueryWide(HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data,
                         DWORD* size);
LSTATUS WINAPI QueryNarrow(HKEY key, const char* name, DWORD* reserved, DWORD* type, BYTE* data,
                           DWORD* size);
LSTATUS WINAPI SetWide(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data,
                       DWORD size);
LSTATUS WINAPI SetNarrow(HKEY key, const char* name, DWORD reserved, DWORD type, const BYTE* data,
                         DWORD size);
LSTATUS WINAPI DeleteWide(HKEY key, const wchar_t* name);

const Import<decltype(RegQueryValueExW)> QueryWideImport(SystemCallPlace("RegQueryValueExW"),
                                                         QueryWide);
const Import<decltype(RegQueryValueExA)> QueryNarrowImport(SystemCallPlace("RegQueryValueExA"),
                                                           QueryNarrow);
const Import<decltype(RegSetValueExW)> SetWideImport(SystemCallPlace("RegSetValueExW"), SetWide);
const Import<decltype(RegSetValueExA)> SetNarrowImport(SystemCallPlace("RegSetValueExA"),
                                                       SetNarrow);
const Import<decltype(RegDeleteValueW)> DeleteWideImport(SystemCallPlace("RegDeleteValueW"),
                                                         DeleteWide);

std::string Outcome(LSTATUS status, const std::string& value) {
  return status == ERROR_SUCCESS ? value : Format(" error %ld", status);
}

std::string Shown(DWORD type, const BYTE* data, DWORD size) {
  if (data == nullptr) return "";
  if (type == REG_DWORD && size == sizeof(DWORD)) {
    DWORD number = 0;
    std::memcpy(&number, data, sizeof(number));
    return Format(" %lu", number);
  }
  return " " + ToHex(data, size);
}

void RecordWrite(const std::string& name, DWORD type, const BYTE* data, DWORD size,
                 LSTATUS status) {
  Record("setting", "write " + name + Outcome(status, Shown(type, data, size)));
}

LSTATUS WINAPI QueryWide(HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data,
                         DWORD* size) {
  if (const uint32_t error = QueryWideImport.CountCall()) return static_cast<LSTATUS>(error);
  return QueryWideImport.System(key, name, reserved, type, data, size);
}

LSTATUS WINAPI QueryNarrow(HKEY key, const char* name, DWORD* reserved, DWORD* type, BYTE* data,
                           DWORD* size) {
  if (const uint32_t error = QueryNarrowImport.CountCall()) return static_cast<LSTATUS>(error);
  return QueryNarrowImport.System(key, name, reserved, type, data, size);
}

LSTATUS WINAPI SetWide(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data,
                       DWORD size) {
  const uint32_t error = SetWideImport.CountCall();
  const LSTATUS status = error != 0 ? static_cast<LSTATUS>(error)
                                    : SetWideImport.System(key, name, reserved, type, data, size);
  RecordWrite(ToNarrow(name), type, data, size, status);
  return status;
}

LSTATUS WINAPI SetNarrow(HKEY key, const char* name, DWORD reserved, DWORD type, const BYTE* data,
                         DWORD size) {
  const uint32_t error = SetNarrowImport.CountCall();
  const LSTATUS status = error != 0 ? static_cast<LSTATUS>(error)
                                    : SetNarrowImport.System(key, name, reserved, type, data, size);
  RecordWrite(name, type, data, size, status);
  return status;
}

LSTATUS WINAPI DeleteWide(HKEY key, const wchar_t* name) {
  const uint32_t error = DeleteWideImport.CountCall();
  const LSTATUS status =
      error != 0 ? static_cast<LSTATUS>(error) : DeleteWideImport.System(key, name);
  Record("setting", "delete " + ToNarrow(name) + Outcome(status, ""));
  return status;
}

}  // namespace
}  // namespace dozewell::lab
