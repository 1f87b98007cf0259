#include "optimizer/grid/hibernated_sleep.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "base/numbers.h"
#include "optimizer/grid/predicted_times.h"
#include "optimizer/simulator/simulator.h"

namespace dozewell {
namespace {

// What is predicted at a sleep's start, each only with the one before it. Seconds.
struct SleepPredictions {
  std::optional<int64_t> hibernation;
  std::optional<int64_t> wakeBack;
  std::optional<int64_t> secondHibernation;
};

// Follows the simulator through one sleep. At most one prediction is scheduled at a time, since one
// is scheduled only once the one before it has come or was dropped.
class SleepReplay {
 public:
  SleepReplay(std::span<const HistoryRecord> records, const SleepPredictions& predictions)
      : records_(records), predictions_(predictions) {}

  Outcomes Run() {
    since_ = TimeOf(records_.front());
    hibernates_ = hibernated_ = records_.front().asleep == kHibernationCode;
    ScheduleHibernation();
    while (next_ < records_.size()) {
      if (scheduled_ && scheduledBefore_ == next_) {
        TakeScheduled();
      } else {
        TakeRecord(records_[next_++]);
      }
    }
    return outcomes_;
  }

 private:
  static int64_t TimeOf(const HistoryRecord& record) { return TruncateToInt64(record.time); }

  void TakeRecord(const HistoryRecord& record) {
    const int64_t time = TimeOf(record);
    switch (record.asleep) {
      case kUseCode:
        CountUntil(time);
        ++(hibernated_ ? outcomes_.resumesFromHibernate : outcomes_.resumesFromSleep);
        break;
      case kHibernationCode:
        // A predicted hibernation that is still to come replaces the recorded one.
        if (!hibernates_ && !scheduled_) Hibernate(time);
        break;
      default:
        // The simulator goes on as asleep, but the time goes on to count as hibernated.
        hibernates_ = false;
    }
  }

  void TakeScheduled() {
    const int64_t time = *scheduled_;
    scheduled_.reset();
    if (isWakeBack_) {
      CountUntil(time);
      hibernates_ = hibernated_ = false;
      ScheduleHibernation();
    } else if (!hibernates_) {
      Hibernate(time);
    }
  }

  void Hibernate(int64_t time) {
    CountUntil(time);
    hibernates_ = hibernated_ = true;
    if (predictions_.wakeBack && *predictions_.wakeBack > time) {
      Schedule(*predictions_.wakeBack, true);
    }
  }

  void ScheduleHibernation() {
    for (const auto& hibernation : {predictions_.hibernation, predictions_.secondHibernation}) {
      if (hibernation && *hibernation > since_) {
        Schedule(*hibernation, false);
        return;
      }
    }
  }

  // Only before the next record other than a hibernation.
  void Schedule(int64_t time, bool isWakeBack) {
    const auto next =
        std::find_if(records_.begin() + static_cast<ptrdiff_t>(next_), records_.end(),
                     [time](const HistoryRecord& record) {
                       return TimeOf(record) > time || record.asleep != kHibernationCode;
                     });
    if (next == records_.end() || TimeOf(*next) <= time) return;
    scheduled_ = time;
    scheduledBefore_ = static_cast<size_t>(next - records_.begin());
    isWakeBack_ = isWakeBack;
  }

  void CountUntil(int64_t time) {
    (hibernated_ ? outcomes_.hibernateSeconds : outcomes_.sleepSeconds) += time - since_;
    since_ = time;
  }

  std::span<const HistoryRecord> records_;
  const SleepPredictions& predictions_;
  size_t next_ = 1;
  bool hibernates_ = false;  // for the next record
  bool hibernated_ = false;  // for the counts
  int64_t since_ = 0;        // when what is counted began
  std::optional<int64_t> scheduled_;
  size_t scheduledBefore_ = 0;
  bool isWakeBack_ = false;
  Outcomes outcomes_;
};

}  // namespace

void CountHibernatedSleep(const ObservedSleep& sleep, const SlotCursor& start,
                          const Thresholds& thresholds, OutcomeTable& table) {
  const auto add = [&](const IndexRange& lows, const IndexRange& highs,
                       const SleepPredictions& predictions) {
    if (lows.begin < lows.end && highs.begin < highs.end) {
      table.Add(lows, highs, SleepReplay(sleep.recorded, predictions).Run());
    }
  };
  IndexRange lowsLeft = thresholds.AllLows();
  IdleSearch idle(start, thresholds.lows, lowsLeft);
  while (idle.Next()) {
    const int64_t hibernation = IdleStart(sleep, idle.FirstSlot().Slot());
    if (hibernation >= sleep.next) break;
    lowsLeft.end = idle.Lows().begin;
    IndexRange highsLeft = thresholds.AllHighs();
    UseSearch use(idle.FirstSlot(), thresholds.highs);
    while (use.Next()) {
      const int64_t wakeBack = SlotStart(sleep, use.Slot().Slot());
      if (wakeBack >= sleep.next) break;
      highsLeft.begin = use.Highs().end;
      IndexRange lowsLeftAgain = idle.Lows();
      IdleSearch idleAgain(use.Slot(), thresholds.lows, idle.Lows());
      while (idleAgain.Next()) {
        const int64_t secondHibernation = SlotStart(sleep, idleAgain.FirstSlot().Slot());
        if (secondHibernation >= sleep.next) break;
        lowsLeftAgain.end = idleAgain.Lows().begin;
        add(idleAgain.Lows(), use.Highs(), {hibernation, wakeBack, secondHibernation});
      }
      add(lowsLeftAgain, use.Highs(), {hibernation, wakeBack, std::nullopt});
    }
    add(idle.Lows(), highsLeft, {hibernation, std::nullopt, std::nullopt});
  }
  add(lowsLeft, thresholds.AllHighs(), {});
}

}  // namespace dozewell
