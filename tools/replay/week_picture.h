#ifndef DOZEWELL_REPLAY_WEEK_PICTURE_H_
#define DOZEWELL_REPLAY_WEEK_PICTURE_H_

#include <span>
#include <string>

#include "prediction/tracker_data.h"

namespace dozewell::replay {

// A picture of a cycle for a terminal of 80 columns: a row for each day, from Monday on when the
// cycle is a week, a character for each 48th of the day, darker the likelier the machine is in
// use. `probabilities` are those of all slots. Colours are an addition for terminals that show
// them. Empty unless the cycle consists of whole days of up to 100 hours each.
std::string DrawCycle(const CycleShape& shape, std::span<const float> probabilities, bool colour);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_WEEK_PICTURE_H_
