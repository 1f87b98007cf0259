#include "plain_simulator.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "base/exception.h"
#include "base/numbers.h"
#include "plain_tracker.h"

namespace dozewell {
namespace {

// `state` is 0 for active, 1 limbo, 2 asleep, 3 hibernating, 5 predicted hibernation, 6 predicted
// wake-back.
struct Event {
  int64_t time;
  int state;
};

class PlainSimulation {
 public:
  explicit PlainSimulation(IConfigurations& parameters) : tracker_(parameters) {}

  SimTimeLine Run(std::span<const HistoryRecord> history) {
    if (history.size() < 3) return {};
    constexpr int kStates[] = {0, 2, 3, 1};
    for (const HistoryRecord& record : history) {
      if (record.asleep > 3) throw FixedTextException("unknown code");
      queue_.push_back({TruncateToInt64(record.time), kStates[record.asleep]});
    }
    int handler = -1;
    while (!queue_.empty()) {
      now_ = queue_.front();
      queue_.pop_front();
      if (now_.state == 5) --hibernations_;
      if (now_.state == 5 || now_.state == 6) --scheduled_;
      if (Handle(handler)) handler = now_.state == 6 ? 2 : now_.state == 5 ? 3 : now_.state;
    }
    return timeLine_;
  }

 private:
  bool Handle(int handler) {
    switch (handler * 10 + now_.state) {
      case -10:  // before the first event
        Record();
        Append();
        return true;
      case 1:  // in use
        Record();
        Cancel();
        Append();
        return true;
      case 2:
      case 3: {
        tm time;
        TmFromSeconds(now_.time, time);
        predictions_ = tracker_.GetPredictions(time);
        Record();
        Cancel();
        ScheduleHibernation();
        Append();
        return true;
      }
      case 5:
      case 6:
        Cancel();
        return true;
      case 10:  // in limbo
      case 15:
      case 16:
      case 20:  // asleep
      case 21:
      case 30:  // hibernating
        Record();
        Cancel();
        Append();
        return true;
      case 23:
        if (hibernations_ > 0) {
          for (const Event& event : queue_) {
            if (event.state == 5) return false;
          }
        }
        Record();
        ScheduleWakeBack();
        Append();
        return true;
      case 25:
        Record();
        CancelHibernations();
        ScheduleWakeBack();
        Append();
        return true;
      case 31:
        Record();
        Append();
        return true;
      case 35:
        CancelHibernations();
        return true;
      case 36:
        Record();
        Cancel();
        ScheduleHibernation();
        Append();
        return true;
      default:
        return true;
    }
  }

  void Record() {
    TimeLineEvent event;
    TmFromSeconds(now_.time, event.time);
    event.state = now_.state == 0 ? 0 : now_.state == 1 ? 2 : 1;
    tracker_.ProcessEvent(event);
  }

  void Append() { timeLine_.push_back({now_.time, static_cast<SimState>(now_.state)}); }

  void ScheduleHibernation() {
    for (const PredictionRecord& prediction : predictions_) {
      if (prediction.minutes <= 0) continue;
      const int64_t point = SecondsFromTm(prediction.time) + int64_t{60} * prediction.minutes;
      if (point <= now_.time) continue;
      Insert({point, 5});
      return;
    }
  }

  void ScheduleWakeBack() {
    for (const PredictionRecord& prediction : predictions_) {
      const int64_t point = SecondsFromTm(prediction.time);
      if (point <= now_.time) continue;
      Insert({point, 6});
      return;
    }
  }

  void Insert(const Event& event) {
    for (size_t i = 0; i < queue_.size(); ++i) {
      if (queue_[i].time > event.time) {
        queue_.insert(queue_.begin() + static_cast<std::ptrdiff_t>(i), event);
        ++scheduled_;
        if (event.state == 5) ++hibernations_;
        return;
      }
      if (queue_[i].state != 3 && queue_[i].state != 5) return;
    }
  }

  void Cancel() {
    if (scheduled_ <= 0) return;
    std::deque<Event> kept;
    for (const Event& event : queue_) {
      if (event.state == 5 || event.state == 6) {
        --scheduled_;
        if (event.state == 6) --hibernations_;
      } else {
        kept.push_back(event);
      }
    }
    queue_ = kept;
  }

  void CancelHibernations() {
    if (hibernations_ <= 0) return;
    std::deque<Event> kept;
    for (const Event& event : queue_) {
      if (event.state == 5) {
        --scheduled_;
        --hibernations_;
      } else {
        kept.push_back(event);
      }
    }
    queue_ = kept;
  }

  PlainTracker tracker_;
  std::vector<PredictionRecord> predictions_;
  Event now_ = {};
  std::deque<Event> queue_;
  SimTimeLine timeLine_;
  int hibernations_ = 0;
  int scheduled_ = 0;
};

}  // namespace

SimTimeLine SimulatePlainly(IConfigurations& parameters, std::span<const HistoryRecord> history) {
  return PlainSimulation(parameters).Run(history);
}

}  // namespace dozewell
