#include "ctl/live_settings.h"

#include "settings/settings_store.h"

namespace dozewell::ctl {

std::optional<uint32_t> ReadLiveSetting(const wchar_t* name) {
  uint32_t value = 0;
  const bool found = ReadSetting(name, value, /*deleteAfterRead=*/false);
  return found ? std::optional(value) : std::nullopt;
}

bool ReadFeatureEnabled() { return ReadLiveSetting(L"EnableZ7Feature").value_or(1) == 1; }

bool ReadPredictionsEnabled() { return ReadLiveSetting(L"DisablePrediction").value_or(0) != 1; }

}  // namespace dozewell::ctl
