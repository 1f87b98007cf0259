#ifndef DOZEWELL_CTL_LIVE_SETTINGS_H_
#define DOZEWELL_CTL_LIVE_SETTINGS_H_

#include <cstdint>
#include <optional>

#include "walk/search_calendar.h"

namespace dozewell::ctl {

// Settings of this machine as the service reads them.

bool ReadFeatureEnabled();
bool ReadPredictionsEnabled();

// There are parameters for this strength: the optimizer stored them, or they are default settings.
bool StrengthHasResult(int32_t strength);

// A counter of the start gate; nothing when it is absent, which keeps the gate shut.
std::optional<uint32_t> ReadAttempts(const wchar_t* name);

// When the service searches.
SearchHabits ReadSearchHabits();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_SETTINGS_H_
