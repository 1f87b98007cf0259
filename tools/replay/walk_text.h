#ifndef DOZEWELL_REPLAY_WALK_TEXT_H_
#define DOZEWELL_REPLAY_WALK_TEXT_H_

#include <cstdint>
#include <string>

#include "common/json.h"
#include "walk/walk_forward.h"
#include "walk/week_samples.h"

namespace dozewell::replay {

// The choices of a walk as a list, each with its outcomes and its scores at the strengths that it
// is for. Scores have three decimals.
Json WalkJson(const Walk& walk, const WeekSamples& samples);

// The searches of a walk as a list.
Json SearchesJson(const Walk& walk);

// A table of the scores by strength, and what they rest on.
std::string WalkText(const Walk& walk, const WeekSamples& samples, int64_t userTimeoutSeconds);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_WALK_TEXT_H_
