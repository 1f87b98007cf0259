#include "common/explanation.h"

#include <algorithm>

#include "base/numbers.h"

namespace dozewell {
namespace {

// Searches the slots after a time as the tracker does, and keeps what it found as evidence.
class EvidenceSearch {
 public:
  EvidenceSearch(ArbitraryCycleProbabilityTracker& tracker, const tm& from)
      : tracker_(tracker), from_(from), seconds_(SecondsFromTm(from)) {
    const CycleShape shape = ShapeOf(*tracker.GetData());
    slotCount_ = tracker.GetData()->slotCount;
    slotSeconds_ = shape.SecondsPerSlot();
    current_ = seconds_ % shape.SecondsPerCycle() / slotSeconds_;
  }

  SearchExplanation FindIdle() {
    const int run = kIdleStretchMinutes / tracker_.GetData()->minutesPerSlot;
    SearchExplanation search = Begin();
    if (run < 1) search.end = SearchEnd::SlotsTooLong;
    if (search.end != SearchEnd::Nowhere) return search;
    int idleSlots = 0;
    std::optional<int> nearest;
    for (int step = 1; step < slotCount_; ++step) {
      const float probability = ProbabilityAt(step);
      if (probability == kUnknownProbability) return Unknown(search, step);
      idleSlots = tracker_.StrengthLow() > probability ? idleSlots + 1 : 0;
      search.longestRun = std::max(search.longestRun, idleSlots);
      if (idleSlots == run) return Found(search, step - run + 1, step);
      if (idleSlots == 0 && (!nearest || probability < ProbabilityAt(*nearest))) nearest = step;
    }
    if (nearest) search.slots = {EvidenceAt(*nearest)};
    return search;
  }

  SearchExplanation FindUse() {
    SearchExplanation search = Begin();
    if (search.end != SearchEnd::Nowhere) return search;
    int nearest = 1;
    for (int step = 1; step < slotCount_; ++step) {
      const float probability = ProbabilityAt(step);
      if (probability == kUnknownProbability) return Unknown(search, step);
      if (probability >= tracker_.StrengthHigh()) return Found(search, step, step);
      if (probability > ProbabilityAt(nearest)) nearest = step;
    }
    search.slots = {EvidenceAt(nearest)};
    return search;
  }

 private:
  SearchExplanation Begin() const {
    const SearchEnd end = slotCount_ < 2 ? SearchEnd::TooFewSlots : SearchEnd::Nowhere;
    return {end, from_, {}, 0, {}, 0};
  }

  SearchExplanation Unknown(SearchExplanation search, int step) {
    search.end = SearchEnd::UnknownSlot;
    search.slots = {EvidenceAt(step)};
    return search;
  }

  SearchExplanation Found(SearchExplanation search, int first, int last) {
    search.end = SearchEnd::Found;
    for (int step = first; step <= last; ++step) search.slots.push_back(EvidenceAt(step));
    search.foundAt = search.slots.front().start;
    search.minutes = (SecondsBetween(from_, search.foundAt) + 59) / 60;
    return search;
  }

  int SlotAt(int step) const { return static_cast<int>((current_ + step) % slotCount_); }
  float ProbabilityAt(int step) { return tracker_.GetSlotProbability(SlotAt(step)); }

  SlotEvidence EvidenceAt(int step) {
    const int slot = SlotAt(step);
    SlotEvidence evidence = {
        slot, {}, tracker_.GetSlotProbability(slot), tracker_.SlotObservations(slot)};
    TmFromSeconds(seconds_ - seconds_ % slotSeconds_ + Wrap32(int64_t{step} * slotSeconds_),
                  evidence.start);
    return evidence;
  }

  ArbitraryCycleProbabilityTracker& tracker_;
  tm from_;
  int64_t seconds_;
  int32_t slotCount_;
  int32_t slotSeconds_;
  int64_t current_;
};

std::vector<std::vector<int>> GroupsOf(const DayGroups* pooledDays) {
  if (pooledDays == nullptr) return {};
  std::vector<std::vector<int>> groups(2);
  for (int day = 0; day < kDaysInWeek; ++day) {
    groups[static_cast<size_t>(pooledDays->GroupOf(day))].push_back(day);
  }
  std::erase_if(groups, [](const auto& group) { return group.empty(); });
  return groups;
}

}  // namespace

Explanation Explain(ArbitraryCycleProbabilityTracker& tracker, const tm& at) {
  const TrackerData& data = *tracker.GetData();
  Explanation explanation = {};
  explanation.at = at;
  explanation.decision = DecideSuspend(tracker.GetPredictions(at), at);
  explanation.minutesPerSlot = data.minutesPerSlot;
  explanation.slotCount = data.slotCount;
  for (int slot = 0; slot < data.slotCount; ++slot) {
    if (tracker.GetSlotProbability(slot) == kUnknownProbability) ++explanation.unknownSlots;
  }
  explanation.strengthLow = tracker.StrengthLow();
  explanation.strengthHigh = tracker.StrengthHigh();
  explanation.dayGroups = GroupsOf(tracker.PooledDays());

  explanation.idle = EvidenceSearch(tracker, at).FindIdle();
  if (explanation.idle.end != SearchEnd::Found) return explanation;
  // Counted in whole minutes, so this may lie a little after the stretch's start.
  tm idleStart = at;
  AddSecondsToTime(&idleStart, Wrap32(int64_t{explanation.idle.minutes} * 60));
  explanation.use = EvidenceSearch(tracker, idleStart).FindUse();
  if (explanation.use->end != SearchEnd::Found) return explanation;
  explanation.nextIdle = EvidenceSearch(tracker, explanation.use->foundAt).FindIdle();
  return explanation;
}

}  // namespace dozewell
