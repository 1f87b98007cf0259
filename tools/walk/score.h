#ifndef DOZEWELL_WALK_SCORE_H_
#define DOZEWELL_WALK_SCORE_H_

#include <cstdint>
#include <optional>

#include "optimizer/simulator/sim_time_line.h"

namespace dozewell {

// What outcomes are worth to a scoring weight: the weight times the share of resumes from sleep,
// and what is left of 100 times the share of time hibernated. 100 is the most. None without a
// resume or without any time.
std::optional<double> ScoreOf(const Outcomes& outcomes, int32_t weight);

}  // namespace dozewell

#endif  // DOZEWELL_WALK_SCORE_H_
