#ifndef DOZEWELL_COMMON_CLAIRVOYANT_H_
#define DOZEWELL_COMMON_CLAIRVOYANT_H_

#include <span>

#include "optimizer/simulator/sim_time_line.h"
#include "prediction/history_file.h"

namespace dozewell {

// The time line of a history with the best prediction for every sleep, made by someone who knows
// when it ends. The machine hibernates from the start of the next slot on, and sleeps again from
// the start of the last slot before the user comes, if the time between is long enough for an idle
// stretch. So every resume is from sleep, and no other prediction that achieves this hibernates
// longer. Throws what SimulateFixedTimeout throws.
SimTimeLine SimulateClairvoyant(std::span<const HistoryRecord> history);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_CLAIRVOYANT_H_
