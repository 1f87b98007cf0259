#ifndef DOZEWELL_REPLAY_OUTCOMES_TEXT_H_
#define DOZEWELL_REPLAY_OUTCOMES_TEXT_H_

#include <string>

#include "common/json.h"
#include "optimizer/simulator/sim_time_line.h"

namespace dozewell::replay {

// The outcomes as a JSON object.
Json OutcomesJson(const Outcomes& outcomes);

// The outcomes in words, a line each.
std::string OutcomesText(const Outcomes& outcomes);

// A line for each entry: its seconds and the number of its state.
std::string TimeLineText(const SimTimeLine& timeLine);

// A list of the same pairs.
Json TimeLineJson(const SimTimeLine& timeLine);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_OUTCOMES_TEXT_H_
