#ifndef DOZEWELL_WALK_TIMEOUT_WALKER_H_
#define DOZEWELL_WALK_TIMEOUT_WALKER_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "walk/walk_counter.h"
#include "walk/walked_sleep.h"

namespace dozewell {

// Walks with fixed timeouts: those that a user might pick, the user's own, for each strength the
// one that the past alone would choose, and the one that turns out best.
class TimeoutWalker {
 public:
  // The counter must outlive the object.
  TimeoutWalker(WalkCounter& counter, int64_t userTimeoutSeconds);

  void Walk(const WalkedSleep& sleep);
  // Finds the timeouts that turned out best.
  void Finish();

 private:
  size_t BestFor(size_t strength, size_t inForce) const;

  WalkCounter& counter_;
  std::vector<int64_t> seconds_;  // 0 is never
  size_t own_;                    // the user's timeout among them
  std::vector<size_t> chosen_;    // from the past, by strength
  size_t firstFixed_;
  size_t firstBest_;
  size_t firstPast_;
};

}  // namespace dozewell

#endif  // DOZEWELL_WALK_TIMEOUT_WALKER_H_
