#include "walk/timeout_walker.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/wall_clock.h"
#include "walk/score.h"

namespace dozewell {
namespace {

constexpr std::array<int64_t, 15> kWalkedMinutes = {1,   5,   10,  20,  30,  45,  60, 90,
                                                    120, 180, 240, 360, 480, 600, 720};

std::vector<int64_t> TimeoutsWith(int64_t ownSeconds) {
  std::vector<int64_t> timeouts;
  timeouts.reserve(kWalkedMinutes.size() + 1);
  for (const int64_t minutes : kWalkedMinutes) timeouts.push_back(minutes * kSecondsPerMinute);
  if (ownSeconds > 0 && std::ranges::find(timeouts, ownSeconds) == timeouts.end()) {
    timeouts.insert(std::ranges::lower_bound(timeouts, ownSeconds), ownSeconds);
  }
  timeouts.push_back(0);
  return timeouts;
}

std::string NameOf(int64_t seconds) {
  if (seconds == 0) return "never";
  return std::to_string(seconds / kSecondsPerMinute) +
         (seconds == kSecondsPerMinute ? " minute" : " minutes");
}

}  // namespace

TimeoutWalker::TimeoutWalker(WalkCounter& counter, int64_t userTimeoutSeconds)
    : counter_(counter),
      seconds_(TimeoutsWith(userTimeoutSeconds)),
      own_(static_cast<size_t>(std::ranges::find(seconds_, userTimeoutSeconds) - seconds_.begin())),
      chosen_(counter.Result().weights.size(), own_),
      firstFixed_(counter.Result().choices.size()) {
  for (const int64_t seconds : seconds_) {
    const size_t choice = counter_.Add(WalkedKind::Fixed, NameOf(seconds));
    counter_.Choice(choice).hibernateAfterMinutes = seconds / kSecondsPerMinute;
  }
  firstBest_ = counter_.AddForStrengths(WalkedKind::BestFixed, "best timeout");
  firstPast_ = counter_.AddForStrengths(WalkedKind::PastFixed, "timeout of the past");
}

void TimeoutWalker::Walk(const WalkedSleep& sleep) {
  std::vector<Outcomes> outcomes;
  for (const int64_t seconds : seconds_) {
    outcomes.push_back(OutcomesOfSleep(sleep, PlanOfTimeout(sleep.suspend, seconds)));
  }
  for (size_t strength = 0; strength < chosen_.size(); ++strength) {
    chosen_[strength] = BestFor(strength, chosen_[strength]);
    counter_.Count(firstPast_ + strength, outcomes[chosen_[strength]]);
  }
  for (size_t i = 0; i < outcomes.size(); ++i) counter_.Count(firstFixed_ + i, outcomes[i]);
}

void TimeoutWalker::Finish() {
  for (size_t strength = 0; strength < chosen_.size(); ++strength) {
    const WalkedChoice& best = counter_.Choice(firstFixed_ + BestFor(strength, own_));
    WalkedChoice& choice = counter_.Choice(firstBest_ + strength);
    choice.hibernateAfterMinutes = best.hibernateAfterMinutes;
    choice.outcomes = best.outcomes;
    choice.weeks = best.weeks;
  }
}

// The timeout that has the best score so far. Among equal ones the one in force stays, and else the
// shortest is taken.
size_t TimeoutWalker::BestFor(size_t strength, size_t inForce) const {
  const int32_t weight = counter_.Result().weights[strength];
  const auto scoreOf = [&](size_t i) {
    return ScoreOf(counter_.Choice(firstFixed_ + i).outcomes, weight);
  };
  size_t best = inForce;
  for (size_t i = 0; i < seconds_.size(); ++i) {
    if (scoreOf(i) > scoreOf(best)) best = i;
  }
  return best;
}

}  // namespace dozewell
