#include <windows.h>

#include <initializer_list>

#include "settings/setting_names.h"
#include "setup/empty_key.h"
namespace dozewell::setup {

void DeleteProductKeysIfEmpty() {
  for (const wchar_t* const path : {kProductKey, kVendorKey}) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key) != ERROR_SUCCESS) continue;
    DWORD keys = 1;
    DWORD values = 1;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr,
                     nullptr, nullptr, nullptr);
    RegCloseKey(key);
    if (keys == 0 && values == 0) RegDeleteKeyW(HKEY_LOCAL_MACHINE, path);
  }
}

}  // namespace dozewell::setup
