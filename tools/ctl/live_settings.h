#ifndef DOZEWELL_CTL_LIVE_SETTINGS_H_
#define DOZEWELL_CTL_LIVE_SETTINGS_H_

#include <cstdint>
#include <optional>

namespace dozewell::ctl {

// Settings of this machine as the service reads them.

// A number; nothing when it is absent.
std::optional<uint32_t> ReadLiveSetting(const wchar_t* name);

bool ReadFeatureEnabled();
bool ReadPredictionsEnabled();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_SETTINGS_H_
