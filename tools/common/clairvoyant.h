#ifndef DOZEWELL_COMMON_CLAIRVOYANT_H_
#define DOZEWELL_COMMON_CLAIRVOYANT_H_

#include <span>

#include "optimizer/simulator/sim_time_line.h"
#include "prediction/history_file.h"

namespace dozewell {

// The time line of a history with the best prediction for every sleep, made by someone who knows
// when it ends: hibernation from the first slot's start on, and sleep again from the start of the
// last slot before the user comes, where an idle stretch is left between. Every resume is from
// sleep, and no prediction that keeps it so hibernates longer. Throws what SimulateFixedTimeout
// throws.
SimTimeLine SimulateClairvoyant(std::span<const HistoryRecord> history);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_CLAIRVOYANT_H_
