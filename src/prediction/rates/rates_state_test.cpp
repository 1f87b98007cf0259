#include "prediction/rates/rates_state.h"

#include <doctest/doctest.h>

#include <memory>

#include "base/wall_clock.h"
#include "prediction/time_line.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

std::unique_ptr<RatesState> NewState() { return std::make_unique<RatesState>(); }

}  // namespace

TEST_CASE("a sleep is learnt when it ends, and the factors are fitted then") {
  const auto state = NewState();
  state->Take(Suspend, kEvening);
  CHECK(state->suspend == kEvening);
  CHECK(state->learnt == LearntRates());
  CHECK(state->factors == RateFactors());
  state->Take(Activating, kEvening + 8 * kHour);
  LearntRates learnt;
  learnt.Learn(kEvening, kEvening + 8 * kHour);
  RateFactors factors;
  factors.Fit(learnt);
  CHECK(state->learnt == learnt);
  CHECK(state->factors == factors);
  CHECK(state->suspend == RatesState::kNone);
  CHECK(state->newest == kEvening + 8 * kHour);
}

TEST_CASE("the first of several suspends begins a sleep and the first activation ends it") {
  const auto state = NewState();
  const auto expected = NewState();
  state->Take(Activating, kEvening - kHour);
  state->Take(Suspend, kEvening);
  state->Take(ShuttingDown, kEvening + kHour);
  state->Take(Suspend, kEvening + 2 * kHour);
  state->Take(Activating, kEvening + 8 * kHour);
  state->Take(Activating, kEvening + 9 * kHour);
  expected->Take(Suspend, kEvening);
  expected->Take(Activating, kEvening + 8 * kHour);
  expected->newest = kEvening + 9 * kHour;
  CHECK(*state == *expected);
}

TEST_CASE("an activation that ends no sleep is not learnt") {
  const auto state = NewState();
  state->Take(Activating, kEvening);
  CHECK(state->learnt == LearntRates());
  CHECK(state->newest == kEvening);
}

TEST_CASE("a stopped container is neither a suspend nor an activation") {
  const auto state = NewState();
  state->Take(ContainerStopped, kEvening);
  CHECK(state->suspend == RatesState::kNone);
  CHECK(state->newest == kEvening);
  state->Take(Suspend, kEvening + kHour);
  state->Take(ContainerStopped, kEvening + 2 * kHour);
  CHECK(state->suspend == kEvening + kHour);
}

TEST_CASE("a sleep that the clock turned round is not learnt, and the next one is") {
  const auto state = NewState();
  state->Take(Suspend, kEvening);
  state->Take(Activating, kEvening - kHour);
  CHECK(state->learnt.sleeps == 0);
  CHECK(state->learnt.lastResume == kEvening - kHour);
  CHECK(state->factors == RateFactors());
  CHECK(state->newest == kEvening);
  state->Take(Suspend, kEvening);
  state->Take(Activating, kEvening + kHour);
  CHECK(state->learnt.sleeps == 1);
}

TEST_CASE("a time before 1970 changes nothing") {
  const auto state = NewState();
  state->Take(Suspend, kEvening);
  const auto before = std::make_unique<RatesState>(*state);
  state->Take(Activating, kInvalidTime);
  CHECK(*state == *before);
}

}  // namespace dozewell
