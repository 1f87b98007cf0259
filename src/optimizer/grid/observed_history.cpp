#include "optimizer/grid/observed_history.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/numbers.h"
#include "optimizer/grid/simulated_cycle.h"
#include "optimizer/simulator/simulator.h"
#include "optimizer/simulator/stop_request.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/slot_learner.h"
#include "prediction/slot_pool.h"

namespace dozewell {
namespace {

// How far predictions for a sleep can look: three searches of nearly a cycle each.
constexpr int64_t kSlotsInReach = 3 * kSimulatedSlots;

// An idle stretch counts when its first slot begins before the sleep's end, but is recognised only
// by the slots behind that one.
constexpr int64_t kSlotsBehindFirst = kIdleStretchMinutes / kSimulatedTimeResolution - 1;

// The sleep that the first of these records begins, with its resume still to be found.
ObservedSleep SleepAt(std::span<const HistoryRecord> records) {
  const int64_t start = TruncateToInt64(records.front().time);
  ObservedSleep sleep = {start, start - start % kSimulatedSlotSeconds, start, std::nullopt, {}};
  if (records.size() == 1) return sleep;
  const auto use =
      std::ranges::find(records.begin() + 1, records.end(), kUseCode, &HistoryRecord::asleep);
  const std::span recorded(records.begin(), use == records.end() ? use : use + 1);
  if (std::ranges::find(recorded, kHibernationCode, &HistoryRecord::asleep) == recorded.end()) {
    sleep.next = TruncateToInt64(records[1].time);
  } else {
    sleep.next = TruncateToInt64(recorded.back().time);
    sleep.recorded = recorded;
  }
  return sleep;
}

// Collects the slots after each sleep for one day grouping.
class SlotObserver {
 public:
  explicit SlotObserver(int32_t dayGrouping)
      : pool_(DayGroups(dayGrouping), kSimulatedSlotsPerDay) {
    slots_.firstRun.push_back(0);
  }

  void AddSleep(const SlotRecord* records, const ObservedSleep& sleep) {
    const int64_t startSlot = sleep.start / kSimulatedSlotSeconds;
    const int64_t nextSlot = sleep.next / kSimulatedSlotSeconds;
    const auto count =
        static_cast<int32_t>(std::min(nextSlot - startSlot + kSlotsBehindFirst, kSlotsInReach));
    auto slotOfCycle = static_cast<int>(startSlot % kSimulatedSlots);
    Observations run = {0, 0, kNone, kNone};  // no run yet
    for (int32_t slot = 1; slot <= count; ++slot) {
      slotOfCycle = slotOfCycle + 1 < kSimulatedSlots ? slotOfCycle + 1 : 0;
      const Observations observations =
          pool_.At(records + slotOfCycle, slotOfCycle / kSimulatedSlotsPerDay);
      if (observations.last == kNone) break;
      if (observations != run) {
        run = observations;
        AddRun(run);
      }
      slots_.end.back() = slot + 1;
    }
    slots_.firstRun.push_back(slots_.end.size());
  }

  // Adds a sleep for which nothing is predicted.
  void AddSleepWithoutSlots() { slots_.firstRun.push_back(slots_.end.size()); }

  ObservedSlots& Result() { return slots_; }

 private:
  void AddRun(const Observations& observations) {
    if (observations.secondLast == kNone || observations.sum == kNone) {
      slots_.incomplete.push_back({slots_.end.size(), observations});
    }
    slots_.end.push_back(0);
    slots_.last.push_back(static_cast<float>(observations.last));
    slots_.secondLast.push_back(static_cast<float>(observations.secondLast));
    slots_.older.push_back(static_cast<float>(observations.sum) /
                           static_cast<float>(observations.count));
  }

  SlotPool pool_;
  ObservedSlots slots_;
};

class HistoryObserver {
 public:
  explicit HistoryObserver(std::span<const int32_t> dayGroupings)
      : observers_(dayGroupings.begin(), dayGroupings.end()) {}

  // Throws what the learner throws.
  void Replay(std::span<const HistoryRecord> history) {
    bool inUse = false;
    bool used = false;
    bool asleep = false;
    for (size_t i = 0; i < history.size() && !OptimizerStopRequested; ++i) {
      const int64_t time = TruncateToInt64(history[i].time);
      const bool fallsAsleep = history[i].asleep != kUseCode;
      if (!used && !asleep && i > 0 && history[i - 1].asleep == kSleepCode &&
          history[i].asleep == kHibernationCode) {
        // Before the first use only a hibernation out of sleep is noticed.
        asleep = true;
        sleeps_.push_back(SleepAt(history.subspan(i)));
        for (SlotObserver& observer : observers_) observer.AddSleepWithoutSlots();
        Learn(time, Suspend);
      }
      if (fallsAsleep != inUse) continue;
      inUse = !fallsAsleep;
      used = true;
      if (asleep) sleeps_.back().resume = time;
      asleep = fallsAsleep && i + 1 < history.size();
      if (asleep) AddSleep(SleepAt(history.subspan(i)));
      Learn(time, fallsAsleep ? Suspend : Activating);
    }
  }

  ObservedHistory Result() {
    ObservedHistory result = {std::move(sleeps_), {}};
    for (SlotObserver& observer : observers_) result.slots.push_back(std::move(observer.Result()));
    return result;
  }

 private:
  void AddSleep(const ObservedSleep& sleep) {
    sleeps_.push_back(sleep);
    for (SlotObserver& observer : observers_) {
      observer.AddSleep(learner_.Data().Slots(), sleep);
    }
  }

  void Learn(int64_t time, TimeLineState state) {
    TimeLineEvent event;
    TmFromSeconds(time, event.time);
    event.state = state;
    learner_.ProcessEvent(event);
  }

  SlotLearner learner_{kSimulatedCycle};
  std::vector<SlotObserver> observers_;
  std::vector<ObservedSleep> sleeps_;
};

bool CanBeShared(const HistoryRecord& record) {
  constexpr int64_t kLastTime = kLastSecond - (kSlotsInReach + 1) * kSimulatedSlotSeconds;
  const int64_t time = TruncateToInt64(record.time);
  return record.asleep <= kHibernationCode && time >= 0 && time <= kLastTime;
}

bool HibernationsAreInOrder(const std::vector<ObservedSleep>& sleeps) {
  return std::ranges::all_of(sleeps, [](const ObservedSleep& sleep) {
    return std::ranges::is_sorted(sleep.recorded, {}, [](const HistoryRecord& record) {
      return TruncateToInt64(record.time);
    });
  });
}

}  // namespace

std::optional<ObservedHistory> ObserveHistory(std::span<const HistoryRecord> history,
                                              std::span<const int32_t> dayGroupings) {
  HistoryObserver observer(dayGroupings);
  if (history.size() >= kFewestSimulatedRecords) {
    if (!std::all_of(history.begin(), history.end(), CanBeShared)) return std::nullopt;
    try {
      observer.Replay(history);
    } catch (const std::exception&) {
      return std::nullopt;
    }
  }
  ObservedHistory observed = observer.Result();
  if (!HibernationsAreInOrder(observed.sleeps)) return std::nullopt;
  return observed;
}

}  // namespace dozewell
