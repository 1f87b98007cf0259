#include "common/coarse_history.h"

#include <cmath>

#include "base/wall_clock.h"

namespace dozewell {

std::vector<HistoryRecord> CoarseHistory(std::span<const HistoryRecord> records, int64_t weeks) {
  constexpr double kMinute = 60;
  constexpr int64_t kWeek = 7 * kSecondsPerDay;
  const auto shift = static_cast<double>(weeks * kWeek);
  std::vector<HistoryRecord> coarse;
  for (const HistoryRecord& record : records) {
    const double time = std::floor(record.time / kMinute) * kMinute + shift;
    if (coarse.empty() || coarse.back().time != time) {
      coarse.push_back({time, record.asleep, 0});
    } else if ((coarse.back().asleep != 0) != (record.asleep != 0)) {
      coarse.pop_back();
    }
  }
  return coarse;
}

}  // namespace dozewell
