#ifndef DOZEWELL_SETTINGS_REGISTRY_KEYS_H_
#define DOZEWELL_SETTINGS_REGISTRY_KEYS_H_

#include <functional>
#include <memory>

namespace dozewell {

struct RegistryKeyCloser {
  void operator()(void* key) const;
};

// Owns an open registry key (an HKEY); null when it could not be opened.
using RegistryKey = std::unique_ptr<void, RegistryKeyCloser>;

// Hands the fallback keys to `query` in turn, first Branding (only while BrandingPresent), then
// Default, until it answers true. A key is open for reading during that call only. False when no
// key could be opened or none answered true. Any thread.
bool QueryFallbackKeys(const std::function<bool(void* key)>& query);

}  // namespace dozewell

#endif  // DOZEWELL_SETTINGS_REGISTRY_KEYS_H_
