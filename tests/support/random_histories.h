#ifndef DOZEWELL_TESTS_SUPPORT_RANDOM_HISTORIES_H_
#define DOZEWELL_TESTS_SUPPORT_RANDOM_HISTORIES_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "prediction/history_file.h"
#include "support/sim_days.h"

namespace dozewell {

// Draws random histories for tests that compare two implementations of the rules. The same seed
// gives the same histories on every system.
class RandomHistories {
 public:
  explicit RandomHistories(uint64_t seed) : engine_(seed) {}

  // Any number of the range with the same chance, both ends included.
  int64_t Between(int64_t low, int64_t high) {
    return low + static_cast<int64_t>(engine_() % static_cast<uint64_t>(high - low + 1));
  }
  bool Chance(int percent) { return Between(1, 100) <= percent; }
  template <typename T>
  T OneOf(const std::vector<T>& values) {
    return values[static_cast<size_t>(Between(0, static_cast<int64_t>(values.size()) - 1))];
  }

  // A history such as the service writes: each record is later than the one before, use and sleep
  // alternate, and most days are alike.
  std::vector<HistoryRecord> Written() {
    const int64_t days = Between(1, 40);
    const int64_t laxity = OneOf<int64_t>({1, 60, 1800, 20000});
    const bool halfSeconds = Chance(20);
    std::vector<int64_t> habits;  // seconds of the day, each a change of state
    for (int64_t i = 2 * Between(1, 4); i > 0; --i) habits.push_back(Between(0, 86399));
    std::sort(habits.begin(), habits.end());
    std::vector<HistoryRecord> history;
    double last = static_cast<double>(kSimDays);
    uint32_t code = Chance(80) ? 0 : 1;
    for (int64_t day = 0; day < days; ++day) {
      if (Chance(10)) day += Between(0, 12);
      for (const int64_t habit : habits) {
        if (Chance(5)) continue;
        double time = static_cast<double>(SimTime(day, 0) + habit + Between(-laxity, laxity));
        if (time < last + 1) time = last + static_cast<double>(Between(1, 900));
        if (halfSeconds) time += 0.5;
        history.push_back({time, code, 0});
        last = time;
        code = 1 - code;
      }
    }
    if (Chance(50) && !history.empty()) history.pop_back();
    return history;
  }

  // A history in order, some of whose sleeps begin with a hibernation or go on as one, once or
  // more.
  std::vector<HistoryRecord> Hibernating() {
    const std::vector<HistoryRecord> written = Written();
    const int often = static_cast<int>(Between(1, 60));
    std::vector<HistoryRecord> history;
    for (size_t i = 0; i < written.size(); ++i) {
      history.push_back(written[i]);
      if (written[i].asleep == 0) continue;
      if (Chance(often)) history.back().asleep = 2;
      double time = written[i].time;
      const double end = i + 1 < written.size() ? written[i + 1].time : time + 40000;
      while (Chance(often)) {
        time += static_cast<double>(Between(0, static_cast<int64_t>(end - time)));
        history.push_back({time, Chance(80) ? 2U : 1U, 0});
      }
    }
    return history;
  }

  // A history with some records of one kind that the service never writes.
  std::vector<HistoryRecord> Hostile() {
    std::vector<HistoryRecord> history = Written();
    const int64_t kind = Between(0, 7);
    for (size_t i = 0; i < history.size(); ++i) {
      HistoryRecord& record = history[i];
      if (!Chance(kind == 7 ? 40 : 4)) continue;
      switch (kind) {
        case 0:  // a state that repeats
        case 7:
          record.asleep = 1 - record.asleep;
          break;
        case 1:  // hibernation and limbo
          record.asleep = static_cast<uint32_t>(Between(0, 3));
          break;
        case 2:  // the time of another record, or just before it
          record.time = OneOf(history).time - static_cast<double>(Between(0, 1));
          break;
        case 3:  // a time out of range or near its end
          record.time = OneOf<double>({-1, 0, 1, 32535215999.0, 32535215000.0, 32534611200.0,
                                       32535216000.0, 1e300, -1e300});
          break;
        case 4:  // no number, an unknown code
          if (Chance(50)) {
            record.time = OneOf<double>({std::numeric_limits<double>::quiet_NaN(), -0.0});
          } else {
            record.asleep = OneOf<uint32_t>({4, 0xFFFFFFFF});
          }
          break;
        case 5:  // a moment after the record before it
          if (i > 0) record.time = history[i - 1].time + 0.25;
          break;
        default:  // a backward step of a repeated state
          if (i > 0) record = {history[i - 1].time - 60, history[i - 1].asleep, 0};
          break;
      }
    }
    return history;
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_RANDOM_HISTORIES_H_
