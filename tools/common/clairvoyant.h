#ifndef DOZEWELL_COMMON_CLAIRVOYANT_H_
#define DOZEWELL_COMMON_CLAIRVOYANT_H_

#include <cstdint>
#include <span>

#include "common/sleep_plan.h"
#include "optimizer/simulator/sim_time_line.h"
#include "prediction/history_file.h"

namespace dozewell {

// The best prediction for a sleep between two wall-clock times, made by someone who knows when it
// ends. The machine hibernates from the start of the next slot on, and sleeps again from the start
// of the last slot before the user comes, if the time between is long enough for an idle stretch.
// So every resume is from sleep, and no other prediction that achieves this hibernates longer.
SleepPlan ClairvoyantPlan(int64_t suspend, int64_t resume);

// The time line of a history with that prediction for every sleep. Throws what SimulateFixedTimeout
// throws.
SimTimeLine SimulateClairvoyant(std::span<const HistoryRecord> history);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_CLAIRVOYANT_H_
