// What a clock that does not go on evenly does to the rate predictor: it learns by the wall clock,
// as the user lives.

#include <doctest/doctest.h>

#include <memory>

#include "prediction/rates/rate_decision.h"
#include "prediction/rates/rates_state.h"
#include "prediction/rates/return_forecast.h"
#include "prediction/time_line.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

constexpr int64_t kNight = 9 * kHour;  // from 22:00 to 07:00

// A machine that is used from 07:00 to 22:00.
class Machine {
 public:
  explicit Machine(int nights) : state_(std::make_unique<RatesState>()) { SleepAtNight(nights); }

  void Sleep(int64_t suspend, int64_t resume) {
    state_->Take(Suspend, suspend);
    state_->Take(Activating, resume);
  }
  void SleepAtNight(int nights) {
    for (int i = 0; i < nights; ++i, evening_ += kDay) Sleep(evening_, evening_ + kNight);
  }
  void SkipNight() { evening_ += kDay; }

  int64_t Evening() const { return evening_; }
  const RatesState& State() const { return *state_; }
  RateDecision DecisionAt(int64_t suspend) const {
    return DecideByRates(ReturnRates(state_->factors),
                         WishesOf(state_->learnt, /*weight=*/50, /*canWake=*/true), suspend);
  }

 private:
  std::unique_ptr<RatesState> state_;
  int64_t evening_ = kEvening;
};

// What the nights come to for a suspend at 22:00, or so much earlier: hibernated at once, woken
// between 06:00 and 06:50, and asleep beyond 07:00.
bool IsHabit(const RateDecision& decision, int64_t earlier = 0) {
  const auto minutesTo = [&](int64_t hours) { return (hours * kHour + earlier) / 60; };
  return decision.hibernate == 3 && decision.second && decision.second->wake >= minutesTo(8) &&
         decision.second->wake <= minutesTo(9) - 10 && decision.second->hibernate > minutesTo(9);
}

}  // namespace

TEST_CASE("a habit is found: hibernated in the evening, woken for the morning") {
  const Machine machine(60);
  CHECK(IsHabit(machine.DecisionAt(machine.Evening())));
  CHECK(IsHabit(machine.DecisionAt(machine.Evening() - kHour), kHour));
}

TEST_CASE("a user whom the change of the clock wakes an hour later is expected as before") {
  Machine machine(60);
  machine.Sleep(machine.Evening(), machine.Evening() + kNight + kHour);
  machine.SkipNight();
  CHECK(IsHabit(machine.DecisionAt(machine.Evening())));
}

TEST_CASE("a sleep within the hour that comes twice, which ends before it began, is not learnt") {
  Machine machine(60);
  const auto before = std::make_unique<RatesState>(machine.State());
  const RateDecision decision = machine.DecisionAt(machine.Evening());
  const int64_t halfPastTwo = machine.Evening() + 4 * kHour + 1800;
  machine.Sleep(halfPastTwo, halfPastTwo - 1200);
  CHECK(machine.State().learnt.sleeps == before->learnt.sleeps);
  CHECK(machine.State().factors == before->factors);
  CHECK(machine.DecisionAt(machine.Evening()) == decision);
}

TEST_CASE("a sleep over the hour that comes twice is learnt as long as the clock shows") {
  Machine machine(60);
  const int64_t halfPastTwo = machine.Evening() + 4 * kHour + 1800;
  const double before = machine.State().learnt.idleSeconds;
  // Two hours later the clock shows one hour more.
  machine.Sleep(halfPastTwo, halfPastTwo + kHour);
  CHECK(machine.State().learnt.sleeps == 61);
  CHECK(machine.State().learnt.idleSeconds < before + kHour);
  CHECK(IsHabit(machine.DecisionAt(machine.Evening() + kDay)));
}

TEST_CASE("a history that begins with a suspend is learnt from that sleep on") {
  // The first night has a suspend and no activation before it.
  const Machine machine(1);
  CHECK(machine.State().learnt.sleeps == 1);
  CHECK(machine.State().learnt.idleSeconds == kNight);
  // Until three sleeps are known nothing hibernates within the first hour.
  CHECK(machine.DecisionAt(machine.Evening()).hibernate >= 60);
}

TEST_CASE("a history that begins with an activation has no sleep before it") {
  const auto state = std::make_unique<RatesState>();
  state->Take(Activating, kEvening);
  CHECK(state->learnt == LearntRates());
  CHECK(state->newest == kEvening);
}

TEST_CASE("a clock that was set back keeps what was learnt, and goes on") {
  Machine machine(60);
  const auto before = std::make_unique<RatesState>(machine.State());
  // During a sleep, by a month.
  machine.Sleep(machine.Evening(), machine.Evening() - 30 * kDay + kNight);
  CHECK(machine.State().learnt.sleeps == 60);
  CHECK(machine.State().factors == before->factors);
  // Nights that were learnt before come again; they fade nothing and count once more.
  const double count = machine.State().learnt.idleCount;
  machine.Sleep(machine.Evening() - 29 * kDay, machine.Evening() - 29 * kDay + kNight);
  CHECK(machine.State().learnt.sleeps == 61);
  CHECK(machine.State().learnt.idleCount > count);
  CHECK(IsHabit(machine.DecisionAt(machine.Evening() - 28 * kDay)));
}

TEST_CASE("a clock that was set forth by days is a long sleep, and the habit stays") {
  Machine machine(60);
  // Nobody comes back after five days: the clock shows it.
  machine.Sleep(machine.Evening(), machine.Evening() + 5 * kDay + kNight);
  for (int i = 0; i < 6; ++i) machine.SkipNight();
  machine.SleepAtNight(1);
  CHECK(IsHabit(machine.DecisionAt(machine.Evening())));
}

TEST_CASE("a clock that was set forth by a year, and back, is no return and no long sleep") {
  Machine machine(60);
  const double mean = machine.State().learnt.MeanIdleSeconds();
  constexpr int64_t kYear = 365 * kDay;
  machine.Sleep(machine.Evening(), machine.Evening() + kYear);
  CHECK(machine.State().learnt.MeanIdleSeconds() <= mean);
  CHECK(IsHabit(machine.DecisionAt(machine.Evening() + kYear)));
  // Set right again while in use.
  machine.SkipNight();
  machine.SleepAtNight(3);
  CHECK(IsHabit(machine.DecisionAt(machine.Evening())));
}

}  // namespace dozewell
