#ifndef DOZEWELL_COMMON_SLEEP_PLAN_H_
#define DOZEWELL_COMMON_SLEEP_PLAN_H_

#include <cstdint>
#include <optional>

namespace dozewell {

// What the machine does after a suspend while nobody comes: when it hibernates, when it is woken
// back to sleep, and when it hibernates again. Wall-clock seconds, each later than the one before
// it and none without that one.
struct SleepPlan {
  std::optional<int64_t> hibernation = {};
  std::optional<int64_t> wakeBack = {};
  std::optional<int64_t> secondHibernation = {};

  bool operator==(const SleepPlan&) const = default;
};

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_SLEEP_PLAN_H_
