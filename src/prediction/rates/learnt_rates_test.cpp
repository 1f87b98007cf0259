#include "prediction/rates/learnt_rates.h"

#include <doctest/doctest.h>

#include <memory>
#include <numeric>

#include "base/wall_clock.h"
#include "prediction/rates/exponential.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

float AwayIn(const LearntRates& learnt, const RateCell& cell) {
  return learnt.secondsAway[cell.Index()];
}

double SumOf(const std::array<float, kRateCells>& cells) {
  return std::accumulate(cells.begin(), cells.end(), 0.0);
}

}  // namespace

TEST_CASE("a sleep adds its seconds to the cells that it passes and one return at its end") {
  const auto learnt = std::make_unique<LearntRates>();
  CHECK(learnt->Learn(kEvening, kEvening + 8 * kHour + 100));
  CHECK(AwayIn(*learnt, {1, 66, 0}) == 180);
  CHECK(AwayIn(*learnt, {1, 66, 1}) == 420);
  CHECK(AwayIn(*learnt, {1, 66, 2}) == 600);
  CHECK(AwayIn(*learnt, {1, 67, 2}) == 300);
  CHECK(AwayIn(*learnt, {1, 67, 3}) == 900);
  CHECK(AwayIn(*learnt, {2, 18, 6}) == 100);
  CHECK(SumOf(learnt->secondsAway) == 8 * kHour + 100);
  CHECK(learnt->returns[RateCell{2, 18, 6}.Index()] == 1);
  CHECK(SumOf(learnt->returns) == 1);
  CHECK(learnt->idleCount == 1);
  CHECK(learnt->idleSeconds == 8 * kHour + 100);
  CHECK(learnt->sleeps == 1);
  CHECK(learnt->lastResume == kEvening + 8 * kHour + 100);
}

TEST_CASE("a sleep makes what was learnt count less by the time since the last resume") {
  const auto learnt = std::make_unique<LearntRates>();
  learnt->Learn(kEvening, kEvening + kHour);
  learnt->Learn(kEvening + 30 * kDay, kEvening + 30 * kDay + kHour);
  const double share = Exponential(-0.25);
  CHECK(learnt->idleCount == share + 1);
  CHECK(learnt->idleSeconds == share * kHour + kHour);
  // Thirty days later it is a Wednesday.
  CHECK(AwayIn(*learnt, {1, 66, 0}) == static_cast<float>(180 * share));
  CHECK(AwayIn(*learnt, {3, 66, 0}) == 180);
  CHECK(learnt->returns[RateCell{1, 68, 3}.Index()] == static_cast<float>(share));
  CHECK(learnt->sleeps == 2);
}

TEST_CASE("nothing counts more after the clock was set back") {
  const auto learnt = std::make_unique<LearntRates>();
  learnt->Learn(kEvening, kEvening + kHour);
  learnt->Learn(kEvening - 30 * kDay, kEvening - 30 * kDay + kHour);
  CHECK(learnt->idleCount == 2);
  CHECK(learnt->lastResume == kEvening - 30 * kDay + kHour);
}

TEST_CASE("a sleep that does not end after its begin only moves the last resume") {
  const auto learnt = std::make_unique<LearntRates>();
  learnt->Learn(kEvening, kEvening + kHour);
  auto expected = std::make_unique<LearntRates>(*learnt);
  CHECK_FALSE(learnt->Learn(kEvening + kDay, kEvening + kDay));
  expected->lastResume = kEvening + kDay;
  CHECK(*learnt == *expected);
  CHECK_FALSE(learnt->Learn(kEvening + 2 * kDay, kEvening));
  expected->lastResume = kEvening;
  CHECK(*learnt == *expected);
}

TEST_CASE("a sleep of eight days is learnt like any other") {
  const auto learnt = std::make_unique<LearntRates>();
  CHECK(learnt->Learn(kEvening, kEvening + 8 * kDay));
  CHECK(SumOf(learnt->secondsAway) == 8 * kDay);
  CHECK(SumOf(learnt->returns) == 1);
  CHECK(learnt->idleCount == 1);
}

TEST_CASE("of a longer sleep eight days count as time away and no return does") {
  const auto learnt = std::make_unique<LearntRates>();
  CHECK(learnt->Learn(kEvening, kEvening + 8 * kDay + 1));
  CHECK(SumOf(learnt->secondsAway) == 8 * kDay);
  CHECK(SumOf(learnt->returns) == 0);
  CHECK(learnt->idleCount == 0);
  CHECK(learnt->idleSeconds == 0);
  CHECK(learnt->sleeps == 1);
  CHECK(learnt->lastResume == kEvening + 8 * kDay + 1);
}

TEST_CASE("the expected sleep starts from three sleeps of eight hours, which never fade") {
  const auto learnt = std::make_unique<LearntRates>();
  CHECK(learnt->MeanIdleSeconds() == 8 * kHour);
  learnt->Learn(kEvening, kEvening + 4 * kHour);
  CHECK(learnt->MeanIdleSeconds() == 7 * kHour);
  learnt->idleCount = 0;
  learnt->idleSeconds = 0;
  CHECK(learnt->MeanIdleSeconds() == 8 * kHour);
}

}  // namespace dozewell
