#include <windows.h>

#include "settings/registry_keys.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

bool IsEmpty(const wchar_t* name) { return name == nullptr || *name == L'\0'; }

RegistryKey OpenCurrentKey(REGSAM access) {
  HKEY key = nullptr;
  const LSTATUS status = RegOpenKeyExW(HKEY_LOCAL_MACHINE, kCurrentKey, 0, access, &key);
  return RegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

RegistryKey CreateCurrentKey() {
  HKEY key = nullptr;
  const LSTATUS status =
      RegCreateKeyExW(HKEY_LOCAL_MACHINE, kCurrentKey, 0, nullptr, REG_OPTION_NON_VOLATILE,
                      KEY_WRITE, nullptr, &key, nullptr);
  return RegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

template <typename Number>
bool Query(void* key, const wchar_t* name, Number& value) {
  Number data = 0;
  DWORD size = sizeof(data);
  const LSTATUS status = RegQueryValueExW(static_cast<HKEY>(key), name, nullptr, nullptr,
                                          reinterpret_cast<BYTE*>(&data), &size);
  if (status != ERROR_SUCCESS) return false;
  value = data;
  return true;
}

template <typename Number>
bool Write(const wchar_t* name, DWORD type, Number value) {
  const RegistryKey current = CreateCurrentKey();
  return current &&
         RegSetValueExW(static_cast<HKEY>(current.get()), name, 0, type,
                        reinterpret_cast<const BYTE*>(&value), sizeof(value)) == ERROR_SUCCESS;
}

}  // namespace

bool ReadSetting(const wchar_t* name, uint32_t& value, bool deleteAfterRead) {
  if (IsEmpty(name)) return false;
  const REGSAM access = deleteAfterRead ? KEY_READ | KEY_SET_VALUE | KEY_CREATE_SUB_KEY : KEY_READ;
  if (const RegistryKey current = OpenCurrentKey(access)) {
    const bool found = Query(current.get(), name, value);
    if (deleteAfterRead) RegDeleteValueW(static_cast<HKEY>(current.get()), name);
    if (found) return true;
  }
  return ReadDefaultSetting(name, value);
}

bool ReadDefaultSetting(const wchar_t* name, uint32_t& value) {
  return !IsEmpty(name) && QueryFallbackKeys([&](void* key) { return Query(key, name, value); });
}

bool WriteSetting(const wchar_t* name, uint32_t value) {
  return !IsEmpty(name) && Write(name, REG_DWORD, value);
}

bool ReadLastOptimizerRun(int64_t& value) {
  const RegistryKey current = OpenCurrentKey(KEY_READ);
  if (current && Query(current.get(), kLastOptimizerRunName, value)) return true;
  uint32_t seconds = 0;
  if (!ReadDefaultSetting(kLastOptimizerRunName, seconds)) return false;
  value = seconds;
  return true;
}

bool WriteLastOptimizerRun(int64_t value) { return Write(kLastOptimizerRunName, REG_QWORD, value); }

}  // namespace dozewell
