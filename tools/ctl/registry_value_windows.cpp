#include <windows.h>

#include "base/utf8.h"
#include "ctl/registry_value.h"

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

}  // namespace dozewell::ctl
