#ifndef DOZEWELL_REPORT_OUTLOOK_H_
#define DOZEWELL_REPORT_OUTLOOK_H_

#include <cstdint>
#include <optional>
#include <vector>

#include "prediction/arbitrary_cycle_probability_tracker.h"

namespace dozewell::report {

// An idle stretch that is predicted, in wall-clock seconds.
struct PredictedIdleness {
  int64_t start;
  std::optional<int64_t> use;  // when the machine is in use again; nothing when that is not known

  bool operator==(const PredictedIdleness&) const = default;
};

// The idle stretches that begin at `now` or later and before `end`. The first is predicted at
// `now`, each further one at the next use before it. A stretch without a next use is the last one.
std::vector<PredictedIdleness> PredictIdleness(ArbitraryCycleProbabilityTracker& tracker,
                                               const tm& now, int64_t end);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_OUTLOOK_H_
