#ifndef DOZEWELL_WALK_WALK_COUNTER_H_
#define DOZEWELL_WALK_WALK_COUNTER_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "optimizer/simulator/sim_time_line.h"
#include "walk/walk_forward.h"
#include "walk/walked_sleep.h"

namespace dozewell {

// Collects in a walk what becomes of each sleep, by choice and week. All choices are added before
// the first sleep begins.
class WalkCounter {
 public:
  // `walk` must outlive the object.
  explicit WalkCounter(Walk& walk) : walk_(walk) {}

  // Adds a choice, and returns its position.
  size_t Add(WalkedKind kind, const std::string& name);
  // Adds one for each strength, and returns the position of the first.
  size_t AddForStrengths(WalkedKind kind, const std::string& name);

  // The sleep that the next outcomes are of.
  void Begin(const WalkedSleep& sleep);
  void Count(size_t choice, const Outcomes& outcomes);

  const Walk& Result() const { return walk_; }
  WalkedChoice& Choice(size_t choice) { return walk_.choices[choice]; }

 private:
  Walk& walk_;
  int64_t firstDay_ = 0;  // the midnight from which weeks count
  int64_t week_ = 0;
};

}  // namespace dozewell

#endif  // DOZEWELL_WALK_WALK_COUNTER_H_
