#include "walk/slot_walker.h"

#include "base/numbers.h"
#include "optimizer/parameter_ranges.h"
#include "optimizer/parameter_search.h"
#include "optimizer/simulator/simulator.h"

namespace dozewell {

SlotWalker::SlotWalker(WalkCounter& counter, std::span<const HistoryRecord> history,
                       IConfigurations& configuration, int64_t userTimeoutSeconds,
                       const SearchHabits& habits)
    : counter_(counter),
      userTimeoutSeconds_(userTimeoutSeconds),
      service_(configuration, counter.Result().weights.size()),
      calendar_(history, habits),
      grid_(BuildParameterGrid(ReadParameterRanges(configuration))),
      settings_(counter.Add(WalkedKind::Settings, "settings")),
      firstService_(counter.AddForStrengths(WalkedKind::Service, "service")),
      firstWithoutWake_(
          counter.AddForStrengths(WalkedKind::ServiceWithoutWake, "service without wake")) {
  if (!history.empty() && history.front().asleep == kUseCode) {
    service_.Learn(TruncateToInt64(history.front().time), Activating);
  }
}

void SlotWalker::Walk(const WalkedSleep& sleep) {
  const auto count = [&](size_t choice, const SuspendDecision& decision, bool canWake) {
    counter_.Count(choice, OutcomesOfSleep(sleep, PlanOfDecision(decision, sleep.suspend,
                                                                 userTimeoutSeconds_, canWake)));
  };
  count(settings_, service_.DecideAsConfigured(sleep.suspend), true);
  for (size_t strength = 0; strength < counter_.Result().weights.size(); ++strength) {
    const SuspendDecision decision = service_.DecideAt(strength, sleep.suspend);
    count(firstService_ + strength, decision, true);
    count(firstWithoutWake_ + strength, decision, false);
  }
  service_.Learn(sleep.suspend, Suspend);
  service_.Learn(sleep.resume, Activating);
  if (const auto search = calendar_.SearchAfter(sleep)) {
    searches_.push_back(*search);
    if (!search->isCutShort) Search(calendar_.Known());
  }
}

void SlotWalker::Search(std::span<const HistoryRecord> known) {
  Outcomes baseline;
  CountOutcomes(SimulateFixedTimeout(known, userTimeoutSeconds_), baseline);
  const auto found = SearchParameters(known, baseline, grid_, counter_.Result().weights).value();
  for (size_t strength = 0; strength < found.size(); ++strength) {
    service_.Apply(strength, found[strength].value);
  }
}

}  // namespace dozewell
