#include "report/outlook.h"

#include "common/explanation.h"

namespace dozewell::report {

std::vector<PredictedIdleness> PredictIdleness(ArbitraryCycleProbabilityTracker& tracker,
                                               const tm& now, int64_t end) {
  std::vector<PredictedIdleness> stretches;
  for (tm from = now;;) {
    const Explanation explanation = Explain(tracker, from);
    if (explanation.idle.end != SearchEnd::Found) return stretches;
    const int64_t start = SecondsFromTm(explanation.idle.foundAt);
    // A stretch that is not later lies beyond the end of the calendar.
    if (start < SecondsFromTm(from) || start >= end) return stretches;
    stretches.push_back({start, std::nullopt});
    if (!explanation.use || explanation.use->end != SearchEnd::Found) return stretches;
    const int64_t use = SecondsFromTm(explanation.use->foundAt);
    if (use <= start) return stretches;
    stretches.back().use = use;
    from = explanation.use->foundAt;
  }
}

}  // namespace dozewell::report
