#include <windows.h>

#include "base/utf8.h"
#include "ctl/registry_value.h"
#include "settings/registry_keys.h"

namespace dozewell::ctl {

std::optional<uint32_t> ReadMachineNumber(const wchar_t* key, const wchar_t* name) {
  DWORD number = 0;
  DWORD size = sizeof(number);
  const LSTATUS status =
      RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_DWORD, nullptr, &number, &size);
  return status == ERROR_SUCCESS ? std::optional<uint32_t>(number) : std::nullopt;
}

std::optional<std::string> ReadMachineText(const wchar_t* key, const wchar_t* name) {
  const auto read = [key, name](wchar_t* text, DWORD& size) {
    return RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ, nullptr, text, &size);
  };
  DWORD size = 0;
  if (read(nullptr, size) != ERROR_SUCCESS) return std::nullopt;
  std::wstring text(size / sizeof(wchar_t), L'\0');
  if (read(text.data(), size) != ERROR_SUCCESS) return std::nullopt;
  text.resize(text.find_last_not_of(L'\0') + 1);
  return NarrowToUtf8(text);
}

std::optional<uint32_t> ReadMachineValueSize(const wchar_t* key, const wchar_t* name) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, key, 0, KEY_READ, &opened) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  const RegistryKey owner(opened);
  DWORD size = 0;
  const LSTATUS status = RegQueryValueExW(opened, name, nullptr, nullptr, nullptr, &size);
  return status == ERROR_SUCCESS ? std::optional<uint32_t>(size) : std::nullopt;
}

}  // namespace dozewell::ctl
