#include "optimizer/grid/sleep_counter.h"

#include <cstdint>

#include "optimizer/grid/predicted_times.h"

namespace dozewell {
namespace {

class SleepCounter {
 public:
  SleepCounter(const ObservedSleep& sleep, const Thresholds& thresholds, OutcomeTable& table)
      : sleep_(sleep), thresholds_(thresholds), table_(table) {}

  // Follows the predictions from the sleep's start up to the event that follows it.
  void Count(const SlotCursor& start) {
    IdleSearch idle(start, thresholds_.lows, thresholds_.AllLows());
    while (idle.Next()) {
      const SlotCursor idleSlot = idle.FirstSlot();
      const int64_t hibernation = IdleStart(sleep_, idleSlot.Slot());
      if (hibernation >= sleep_.next) return;
      AddHibernation(sleep_.start, hibernation, idle.Lows(), thresholds_.AllHighs());
      UseSearch use(idleSlot, thresholds_.highs);
      while (use.Next()) {
        const int64_t wakeBack = SlotStart(sleep_, use.Slot().Slot());
        if (wakeBack >= sleep_.next) break;
        AddWakeBack(hibernation, wakeBack, idle.Lows(), use.Highs());
        IdleSearch idleAgain(use.Slot(), thresholds_.lows, idle.Lows());
        while (idleAgain.Next()) {
          const int64_t secondHibernation = SlotStart(sleep_, idleAgain.FirstSlot().Slot());
          if (secondHibernation >= sleep_.next) break;
          AddHibernation(wakeBack, secondHibernation, idleAgain.Lows(), use.Highs());
        }
      }
    }
  }

 private:
  // A change of state moves the rest of the sleep, and the resume that ends it, from the old state
  // to the new one. Without a resume the rest does not count; then the stretch before the change is
  // added.
  void AddHibernation(int64_t asleepSince, int64_t time, const IndexRange& lows,
                      const IndexRange& highs) {
    if (sleep_.resume) {
      const int64_t rest = *sleep_.resume - time;
      table_.Add(lows, highs, {-rest, rest, -1, 1});
    } else {
      table_.Add(lows, highs, {time - asleepSince, 0, 0, 0});
    }
  }

  void AddWakeBack(int64_t hibernatedSince, int64_t time, const IndexRange& lows,
                   const IndexRange& highs) {
    if (sleep_.resume) {
      const int64_t rest = *sleep_.resume - time;
      table_.Add(lows, highs, {rest, -rest, 1, -1});
    } else {
      table_.Add(lows, highs, {0, time - hibernatedSince, 0, 0});
    }
  }

  const ObservedSleep& sleep_;
  const Thresholds& thresholds_;
  OutcomeTable& table_;
};

}  // namespace

void CountPredictions(const ObservedSleep& sleep, const SlotCursor& start,
                      const Thresholds& thresholds, OutcomeTable& table) {
  SleepCounter(sleep, thresholds, table).Count(start);
}

}  // namespace dozewell
