#include "optimizer/parameter_search.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

#include "base/exception.h"
#include "optimizer/simulator/stop_request.h"
#include "support/sim_days.h"

namespace dozewell {
namespace {

using History = std::vector<HistoryRecord>;

// Use from 8 to 12 and from 13 to 18 on every day of two weeks. In the second one, a threshold that
// calls anything idle hibernates every sleep after ten minutes, since each ends as predicted.
History TwoWeeks() {
  History history;
  for (int day = 0; day < 14; ++day) {
    for (const int hour : {8, 13}) history.push_back(SimRecord(0, day, hour));
    for (const int hour : {12, 18}) history.push_back(SimRecord(1, day, hour));
    std::swap(history[history.size() - 3], history[history.size() - 2]);
  }
  history.push_back(SimRecord(0, 14, 8));
  return history;
}

// Too short to learn anything from, so all sets come to the same.
History OneSleep() { return {SimRecord(0, 0, 8), SimRecord(1, 0, 12), SimRecord(0, 0, 13)}; }

constexpr Outcomes kAllAsleep = {3600, 0, 1, 0};
constexpr Outcomes kHalfHibernated = {386400, 369600, 14, 14};
constexpr Outcomes kNeverHibernated = {756000, 0, 28, 0};

ParameterGrid Grid(const std::vector<StrengthPair>& strengths) {
  return {strengths, {{60, 30, 10}}, {0}};
}

std::vector<BestSet> Search(const History& history, const Outcomes& baseline,
                            const ParameterGrid& grid, const std::vector<int32_t>& weights) {
  const auto results = SearchParameters(history, baseline, grid, weights);
  REQUIRE(results.has_value());
  REQUIRE(results->size() == weights.size());
  return *results;
}

}  // namespace

TEST_CASE("every set is simulated once, even without scoring weights") {
  std::vector<Outcomes> seen(2);
  const auto visit = [&](uint64_t position, const Outcomes& outcomes) {
    CHECK(seen.at(position) == Outcomes{});
    seen.at(position) = outcomes;
  };
  const auto results =
      SearchParameters(TwoWeeks(), kAllAsleep, Grid({{50, 50}, {50, 0}}), {}, visit);
  REQUIRE(results.has_value());
  CHECK(results->empty());
  CHECK(seen == std::vector{kHalfHibernated, kNeverHibernated});
}

TEST_CASE("each scoring weight has its own winner") {
  const auto results =
      Search(TwoWeeks(), kAllAsleep, Grid({{50, 0}, {50, 50}, {60, 0}}), {100, 0, 100});
  CHECK(results[0].name == "Best0");
  CHECK(results[0].value == "60,30,10,60,0,0");
  CHECK(results[0].score == 100.0F);
  CHECK(results[0].baseline == 100.0F);
  CHECK(results[1].name == "Best1");
  CHECK(results[1].value == "60,30,10,50,50,0");
  CHECK(results[1].score == 100.0F * (369600.0F / 756000.0F));
  CHECK(results[1].baseline == 0.0F);
  CHECK(results[2].name == "Best2");
  CHECK(results[2].value == results[0].value);
  CHECK(results[0].outcomes == kNeverHibernated);
  CHECK(results[1].outcomes == kHalfHibernated);
}

TEST_CASE("what no set won has no outcomes") {
  CHECK_FALSE(Search(OneSleep(), kAllAsleep, Grid({}), {50})[0].outcomes.has_value());
  const Outcomes three = {100, 300, 1, 3};
  const BestSet tooLow = Search(OneSleep(), three, Grid({{50, 40}}), {49})[0];
  CHECK(tooLow.value == "-1");
  CHECK_FALSE(tooLow.outcomes.has_value());
}

TEST_CASE("among sets of equal score the last one wins") {
  CHECK(Search(OneSleep(), kAllAsleep, Grid({{50, 0}, {50, 40}, {50, 20}}), {50})[0].value ==
        "60,30,10,50,20,0");
}

TEST_CASE("a score that equals the baseline is enough") {
  const Outcomes three = {100, 300, 1, 3};
  const auto results = Search(OneSleep(), three, Grid({{50, 40}}), {50, 49, 51});
  CHECK(results[0].score == 50.0F);
  CHECK(results[0].baseline == 50.0F);
  CHECK(results[0].value == "60,30,10,50,40,0");
  CHECK(results[1].score == 49.0F);
  CHECK(results[1].baseline == 50.5F);
  CHECK(results[1].value == "-1");
  CHECK(results[2].baseline == 49.5F);
  CHECK(results[2].value == "60,30,10,50,40,0");
}

TEST_CASE("shares and scores are in single precision, the seconds in them are summed in 64 bits") {
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  const auto baseline = [](const Outcomes& outcomes, int32_t weight) {
    return Search(OneSleep(), outcomes, Grid({}), {weight})[0].baseline;
  };
  CHECK(baseline({2, 1, 1, 2}, 10) == 10.0F * (1.0F / 3.0F) + 90.0F * (1.0F / 3.0F));
  CHECK(baseline({16777216, 16777217, 1, 0}, 0) == 100.0F * (16777216.0F / 33554432.0F));
  CHECK(baseline({1, int64_t{1} << 40, 1, 0}, 0) == 100.0F);
  // The resumes are added in 32 bits.
  CHECK(baseline({0, 1, kMost, 1}, 100) == -100.0F);
  // So is the complement of the weight.
  CHECK(baseline({0, 1, 1, 0}, std::numeric_limits<int32_t>::min()) == -4294967296.0F);
}

TEST_CASE("weights outside 0 to 100 are used as they are") {
  const auto results = Search(TwoWeeks(), kAllAsleep, Grid({{50, 0}, {50, 50}}), {200, -100});
  CHECK(results[0].score == 200.0F);
  CHECK(results[0].value == "60,30,10,50,0,0");
  CHECK(results[1].score == -100.0F * 0.5F + 200.0F * (369600.0F / 756000.0F));
  CHECK(results[1].baseline == -100.0F);
  CHECK(results[1].value == "60,30,10,50,50,0");
}

TEST_CASE(
    "a score below zero never wins, and the default set is stored unless the baseline is above 0") {
  const auto results = Search(OneSleep(), kAllAsleep, Grid({{50, 40}}), {-1});
  CHECK(results[0].score == 0.0F);
  CHECK(results[0].baseline == -1.0F);
  CHECK(results[0].value == ",,,,,");
}

TEST_CASE("a set with a score of zero wins over the default set") {
  const auto results = Search(OneSleep(), kAllAsleep, Grid({{50, 40}}), {0});
  CHECK(results[0].score == 0.0F);
  CHECK(results[0].value == "60,30,10,50,40,0");
}

TEST_CASE("an empty grid stores -1, or the default set for a baseline of zero") {
  const auto value = [](const Outcomes& baseline, int32_t weight) {
    return Search(OneSleep(), baseline, Grid({}), {weight})[0].value;
  };
  CHECK(value(kAllAsleep, 50) == "-1");
  CHECK(value({}, 50) == "-1");  // 0/0
  CHECK(value(kAllAsleep, 0) == ",,,,,");
}

TEST_CASE("a history of two records scores nothing and stores -1") {
  History two = OneSleep();
  two.pop_back();
  const auto results = Search(two, {}, Grid({{50, 40}}), {0, 50, 100});
  for (const BestSet& best : results) {
    CHECK(best.score == 0.0F);
    CHECK(std::isnan(best.baseline));
    CHECK(best.value == "-1");
  }
}

TEST_CASE("an exception of a simulation ends the search") {
  ParameterGrid grid = Grid({{50, 40}});
  grid.weights.push_back({-1, 30, 71});
  int visits = 0;
  const auto visit = [&visits](uint64_t, const Outcomes&) { ++visits; };
  CHECK_THROWS_WITH_AS(SearchParameters(OneSleep(), kAllAsleep, grid, {50}, visit),
                       "No weigths specified", FixedTextException);
  // The set before the refused one was still simulated.
  CHECK(visits == 1);
}

TEST_CASE("a stop request leaves no result") {
  OptimizerStopRequested = true;
  CHECK_FALSE(SearchParameters(OneSleep(), kAllAsleep, Grid({{50, 40}}), {50}).has_value());
  OptimizerStopRequested = false;
  // A stop request during the last set counts too.
  const auto stop = [](uint64_t, const Outcomes&) { OptimizerStopRequested = true; };
  CHECK_FALSE(SearchParameters(OneSleep(), kAllAsleep, Grid({{50, 40}}), {50}, stop).has_value());
  OptimizerStopRequested = false;
}

}  // namespace dozewell
