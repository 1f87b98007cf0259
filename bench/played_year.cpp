#include "played_year.h"

#include <random>

namespace dozewell {

std::vector<TimeLineEvent> PlayedYear() {
  constexpr int64_t kFirstDay = 20454;  // 2026-01-01, a Thursday
  constexpr int kMinute = 60;
  constexpr int kHour = 60 * kMinute;
  std::mt19937_64 random(1);
  const auto between = [&random](int64_t low, int64_t high) {
    return low + static_cast<int64_t>(random() % static_cast<uint64_t>(high - low));
  };
  std::vector<TimeLineEvent> events;
  for (int64_t day = 0; day < 365; ++day) {
    const int64_t midnight = (kFirstDay + day) * 86400;
    const bool weekend = day % 7 == 2 || day % 7 == 3;
    if (weekend && between(0, 3) > 0) continue;
    int64_t now = midnight + between(weekend ? 10 * kHour : 7 * kHour + 30 * kMinute,
                                     weekend ? 14 * kHour : 9 * kHour);
    const int64_t evening = midnight + between(16 * kHour, 19 * kHour);
    while (now < evening) {
      TimeLineEvent event;
      TmFromSeconds(now, event.time);
      event.state = Activating;
      events.push_back(event);
      now += between(20 * kMinute, 3 * kHour);
      TmFromSeconds(now, event.time);
      event.state = Suspend;
      events.push_back(event);
      now += between(5 * kMinute, kHour);
    }
  }
  return events;
}

}  // namespace dozewell
