#include "walk/walk_counter.h"

#include "base/numbers.h"
#include "base/wall_clock.h"

namespace dozewell {
size_t WalkCounter::Add(WalkedKind kind, const std::string& name) {
  walk_.choices.push_back({kind, name});
  return walk_.choices.size() - 1;
}

size_t WalkCounter::AddForStrengths(WalkedKind kind, const std::string& name) {
  const size_t first = walk_.choices.size();
  for (size_t strength = 0; strength < walk_.weights.size(); ++strength) {
    walk_.choices.push_back({kind, name + ", strength " + std::to_string(strength), strength});
  }
  return first;
}

void WalkCounter::Begin(const WalkedSleep& sleep) {
  constexpr int64_t kWeek = 7 * kSecondsPerDay;
  if (walk_.sleeps == 0) firstDay_ = sleep.suspend - sleep.suspend % kSecondsPerDay;
  const int64_t week = WrapSubtract64(sleep.suspend, firstDay_) / kWeek;
  if (walk_.sleeps == 0 || week != week_) {
    ++walk_.weeks;
    for (WalkedChoice& choice : walk_.choices) choice.weeks.emplace_back();
  }
  week_ = week;
  ++walk_.sleeps;
}

void WalkCounter::Count(size_t choice, const Outcomes& outcomes) {
  walk_.choices[choice].outcomes += outcomes;
  walk_.choices[choice].weeks.back() += outcomes;
}

}  // namespace dozewell
