#ifndef DOZEWELL_WALK_WALKED_SLEEP_H_
#define DOZEWELL_WALK_WALKED_SLEEP_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "common/sleep_plan.h"
#include "optimizer/simulator/sim_time_line.h"
#include "prediction/history_file.h"
#include "prediction/suspend_decision.h"

namespace dozewell {

// A sleep with a resume. Times are wall-clock seconds.
struct WalkedSleep {
  int64_t suspend;
  int64_t resume;
  size_t resumeRecord;                 // the position of the resume in the history
  std::optional<int64_t> nextSuspend;  // none when the history ends in use

  bool operator==(const WalkedSleep&) const = default;
};

// The sleeps of a history. All codes but that of use count as sleep, and of several records of one
// kind in a row the first counts. None where the history is too short to be simulated. Throws
// FixedTextException for an unknown code.
std::vector<WalkedSleep> SleepsOf(std::span<const HistoryRecord> history);

// With a hibernate-after timeout; 0 seconds never hibernate.
SleepPlan PlanOfTimeout(int64_t suspend, int64_t timeoutSeconds);

// As a machine carries out the service's decision. Where nothing is predicted, the user's own
// timeout holds. Timer and timeouts run in whole minutes. After a wake back to sleep without a
// timeout of its own, the one of the first hibernation is still in the power scheme.
SleepPlan PlanOfDecision(const SuspendDecision& decision, int64_t suspend,
                         int64_t userTimeoutSeconds, bool canWake);

// The outcomes of a sleep. What is planned for the second of the resume or later does not happen.
Outcomes OutcomesOfSleep(const WalkedSleep& sleep, const SleepPlan& plan);

}  // namespace dozewell

#endif  // DOZEWELL_WALK_WALKED_SLEEP_H_
