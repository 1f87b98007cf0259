#include <windows.h>

#include "settings/registry_keys.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

RegistryKey OpenForReading(const wchar_t* path) {
  HKEY key = nullptr;
  const LSTATUS status = RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key);
  return RegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

}  // namespace

void RegistryKeyCloser::operator()(void* key) const { RegCloseKey(static_cast<HKEY>(key)); }

bool QueryFallbackKeys(const std::function<bool(void* key)>& query) {
  if (BrandingPresent) {
    const RegistryKey branding = OpenForReading(kBrandingKey);
    if (!branding) {
      BrandingPresent = false;
    } else if (query(branding.get())) {
      return true;
    }
  }
  const RegistryKey defaults = OpenForReading(kDefaultKey);
  return defaults && query(defaults.get());
}

}  // namespace dozewell
