#include "optimizer/grid/grid_simulator.h"

#include <doctest/doctest.h>

#include <exception>
#include <limits>
#include <string>
#include <vector>

#include "optimizer/simulator/stop_request.h"
#include "support/random_histories.h"
#include "support/sim_days.h"

namespace dozewell {
namespace {

using History = std::vector<HistoryRecord>;

std::string Text(const ParameterSet& set, const Outcomes& outcomes) {
  std::string text;
  for (const int64_t number :
       {int64_t{set.weights.firstLast}, int64_t{set.weights.secondLast},
        int64_t{set.weights.agregation}, int64_t{set.strengths.high}, int64_t{set.strengths.low},
        int64_t{set.dayGrouping}, outcomes.sleepSeconds, outcomes.hibernateSeconds,
        int64_t{outcomes.resumesFromSleep}, int64_t{outcomes.resumesFromHibernate}}) {
    text += std::to_string(number) + ',';
  }
  return text;
}

// A line for each set in the grid's order, "unseen" for one that was not visited.
struct Lines {
  const ParameterGrid& grid;
  std::vector<std::string> lines = std::vector<std::string>(grid.Size(), "unseen");

  SetVisitor Visitor() {
    return [this](uint64_t position, const Outcomes& outcomes) {
      CHECK(lines.at(position) == "unseen");
      lines.at(position) = Text(grid.SetAt(position), outcomes);
    };
  }
};

// False when the sets were not simulated at once. When they were, checks that one by one they give
// the same.
bool SharedAndEqual(const ParameterGrid& grid, const History& history) {
  Lines atOnce = {grid};
  if (!GridSimulator(grid, history).Simulate(atOnce.Visitor())) {
    CHECK(atOnce.lines == std::vector<std::string>(grid.Size(), "unseen"));
    return false;
  }
  Lines oneByOne = {grid};
  SimulateEachSet(grid, history, oneByOne.Visitor());
  CHECK(atOnce.lines == oneByOne.lines);
  return true;
}

// Use from 8 to 12 and from 13 to 18 on every day.
History RegularDays(int days) {
  History history;
  for (int day = 0; day < days; ++day) {
    history.push_back(SimRecord(0, day, 8));
    history.push_back(SimRecord(1, day, 12));
    history.push_back(SimRecord(0, day, 13));
    history.push_back(SimRecord(1, day, 18));
  }
  return history;
}

ParameterGrid DrawGrid(RandomHistories& random) {
  constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  const auto draw = [&random](int64_t most, auto one) {
    std::vector<decltype(one())> drawn;
    for (int64_t i = random.Between(1, most); i > 0; --i) drawn.push_back(one());
    return drawn;
  };
  ParameterGrid grid;
  grid.strengths = draw(6, [&random] {
    const auto percent = [&random] {
      if (random.Chance(3)) return random.OneOf<int32_t>({kLeast, kMost});
      return static_cast<int32_t>(random.Chance(70) ? random.Between(0, 100)
                                                    : random.Between(-130, 230));
    };
    return StrengthPair{percent(), percent()};
  });
  grid.weights = draw(3, [&random] {
    // Some are refused, and some give probabilities of exactly -1, of 0/0 or of n/0.
    const int64_t first = random.OneOf<int64_t>({0, 5, 10, 20, 33, 50, 60, -100, 100, -50, -200});
    const int64_t second =
        random.Chance(15) ? -first : random.OneOf<int64_t>({0, 10, 20, 40, -100, -25, -75});
    const int64_t agregation = random.Chance(95) ? 100 - first - second : random.Between(-100, 100);
    if (random.Chance(1)) return WeightTriple{-1, 1, 100};
    if (random.Chance(3)) return WeightTriple{kMost, kMost, 102};  // the sum wraps
    return WeightTriple{static_cast<int32_t>(first), static_cast<int32_t>(second),
                        static_cast<int32_t>(agregation)};
  });
  grid.dayGroupings = draw(3, [&random] {
    return static_cast<int32_t>(
        random.OneOf<int64_t>({0, 127, 12, 115, 255, 128, -1, kLeast, kMost, random.Between(0, 127),
                               random.Between(-1000, 1000)}));
  });
  return grid;
}

}  // namespace

TEST_CASE("a grid simulated at once gives what each of its sets gives") {
  const ParameterGrid grid = {{{50, 50}, {50, 0}, {80, 40}, {90, 101}},
                              {{60, 30, 10}, {10, 20, 70}},
                              {0, 12, 115, 127, 255, 0}};
  CHECK(SharedAndEqual(grid, RegularDays(24)));
}

TEST_CASE("random grids simulated at once give what each of their sets gives, over any history") {
  RandomHistories random(2);
  int shared = 0;
  for (int round = 0; round < 500; ++round) {
    CAPTURE(round);
    const History history = random.Chance(50) ? random.Written() : random.Hostile();
    if (SharedAndEqual(DrawGrid(random), history)) ++shared;
  }
  CHECK(shared > 300);
}

TEST_CASE("recorded hibernations are simulated at once, wherever they stand in a sleep") {
  RandomHistories random(3);
  int shared = 0;
  for (int round = 0; round < 500; ++round) {
    CAPTURE(round);
    if (SharedAndEqual(DrawGrid(random), random.Hibernating())) ++shared;
  }
  CHECK(shared > 400);
}

TEST_CASE("what is predicted for a sleep decides what its recorded hibernations do") {
  // A usual week, and then a day of which each part of the sleep is a hibernation.
  const ParameterGrid grid = {
      {{50, 50}, {50, 0}, {80, 40}, {90, 101}, {100, 0}}, {{60, 30, 10}, {10, 20, 70}}, {0, 12}};
  for (const uint32_t first : {1U, 2U}) {
    for (const double minutes : {1.0, 10.0, 45.0, 60.0}) {
      CAPTURE(first);
      CAPTURE(minutes);
      History history = RegularDays(24);
      history.back().asleep = first;
      for (int i = 1; i <= 12; ++i) {
        const double time = history.back().time + minutes * 60;
        history.push_back({time, i % 5 == 0 ? 1U : 2U, 0});
      }
      CHECK(SharedAndEqual(grid, history));
      history.push_back(SimRecord(0, 24, 14));
      CHECK(SharedAndEqual(grid, history));
    }
  }
}

TEST_CASE("a hibernation before the first use counts when it follows a sleep") {
  const ParameterGrid grid = {{{50, 50}}, {{60, 30, 10}}, {0}};
  const auto after = [&grid](History beginning) {
    const History days = RegularDays(20);
    beginning.insert(beginning.end(), days.begin(), days.end());
    return SharedAndEqual(grid, beginning);
  };
  CHECK(after({SimRecord(2, 0, 1)}));
  CHECK(after({SimRecord(1, 0, 1), SimRecord(2, 0, 2)}));
  CHECK(after({SimRecord(2, 0, 1), SimRecord(2, 0, 2), SimRecord(1, 0, 3), SimRecord(2, 0, 4)}));
  CHECK(after({SimRecord(1, 0, 1), SimRecord(2, 0, 2), SimRecord(1, 0, 3), SimRecord(2, 0, 4)}));
}

TEST_CASE("probabilities of exactly -1 and of 0/0 count as they do for the predictor") {
  // A last observation alone gives -100 of 100; two observations give 0/0.
  const std::vector<WeightTriple> weights = {{-100, 100, 100}, {100, -100, 100}, {0, 0, 100},
                                             {50, -50, 100},   {-200, 100, 200}, {-25, -75, 200}};
  for (const WeightTriple& triple : weights) {
    const ParameterGrid grid = {
        {{50, 50}, {0, 0}, {-100, -50}, {-150, 150}, {101, 101}}, {triple}, {0, 12, 255}};
    CHECK(SharedAndEqual(grid, RegularDays(30)));
    History irregular = RegularDays(40);
    for (size_t i = 0; i < irregular.size(); i += 7) irregular[i].time += 1800;
    CHECK(SharedAndEqual(grid, irregular));
  }
}

TEST_CASE("low thresholds may stand above high ones") {
  const ParameterGrid grid = {{{0, 100}, {20, 80}, {-50, 200}}, {{20, 20, 60}}, {0, 12}};
  CHECK(SharedAndEqual(grid, RegularDays(30)));
}

TEST_CASE("a history may end asleep, with a repeated sleep, or with a long absence") {
  const ParameterGrid grid = {{{50, 50}, {20, 10}}, {{60, 30, 10}}, {0, 12}};
  History history = RegularDays(20);
  CHECK(SharedAndEqual(grid, history));
  history.push_back(SimRecord(1, 19, 20));
  CHECK(SharedAndEqual(grid, history));
  history.back() = SimRecord(1, 60, 20);
  CHECK(SharedAndEqual(grid, history));
  history.push_back(SimRecord(0, 90, 8));
  CHECK(SharedAndEqual(grid, history));
}

TEST_CASE("repeated states are shared, even when their times go back") {
  const ParameterGrid grid = {{{50, 50}, {20, 10}}, {{60, 30, 10}}, {0, 12}};
  History history = RegularDays(20);
  history.insert(history.begin() + 50, SimRecord(1, 3, 7));
  history.insert(history.begin() + 45, SimRecord(0, 2, 7));
  CHECK(SharedAndEqual(grid, history));
}

TEST_CASE("a sleep with hibernations whose times go back is not simulated at once") {
  const ParameterGrid grid = {{{50, 50}}, {{60, 30, 10}}, {0}};
  History history = RegularDays(3);
  history.insert(history.begin() + 8, SimRecord(2, 1, 20));
  CHECK(SharedAndEqual(grid, history));
  history[8] = SimRecord(2, 1, 17);
  CHECK_FALSE(SharedAndEqual(grid, history));
}

TEST_CASE("histories too short to simulate come to nothing, whatever their codes") {
  const ParameterGrid grid = {{{50, 50}}, {{60, 30, 10}}, {0}};
  CHECK(SharedAndEqual(grid, {}));
  CHECK(SharedAndEqual(grid, {SimRecord(7, 0, 9), SimRecord(7, 0, 8)}));
}

TEST_CASE("sets that may learn different things or may throw are not simulated at once") {
  const ParameterGrid grid = {{{50, 50}}, {{60, 30, 10}}, {0}};
  const auto shares = [&grid](size_t index, const HistoryRecord& record) {
    History history = RegularDays(3);
    history[index] = record;
    return SharedAndEqual(grid, history);
  };
  CHECK(shares(5, SimRecord(1, 1, 12)));
  CHECK(shares(5, SimRecord(2, 1, 12)));
  CHECK_FALSE(shares(5, SimRecord(3, 1, 12)));
  CHECK_FALSE(shares(5, SimRecord(4, 1, 12)));
  CHECK_FALSE(shares(5, SimRecord(1, 1, 8)));
  CHECK_FALSE(shares(5, SimRecord(1, 1, 7)));
  CHECK_FALSE(shares(0, {-1, 0, 0}));
  CHECK_FALSE(shares(11, {32535215999.0, 1, 0}));
  for (const WeightTriple& triple :
       {WeightTriple{-1, 1, 100}, WeightTriple{1, -1, 100}, WeightTriple{50, 51, -1}}) {
    ParameterGrid refused = grid;
    refused.weights.push_back(triple);
    CHECK_FALSE(SharedAndEqual(refused, RegularDays(3)));
  }
}

TEST_CASE("an empty grid has no sets to visit") {
  const History history = RegularDays(3);
  CHECK(SharedAndEqual({{}, {{60, 30, 10}}, {0}}, history));
  CHECK(SharedAndEqual({{{50, 50}}, {}, {0}}, history));
  CHECK(SharedAndEqual({{{50, 50}}, {{60, 30, 10}}, {}}, history));
}

TEST_CASE("a stop request ends both ways through a grid") {
  const ParameterGrid grid = {{{50, 50}}, {{60, 30, 10}, {10, 10, 80}, {10, 20, 70}}, {0, 12}};
  const History history = RegularDays(3);
  int visits = 0;
  const auto stop = [&visits](uint64_t, const Outcomes&) {
    if (++visits == 2) OptimizerStopRequested = true;
  };
  CHECK(GridSimulator(grid, history).Simulate(stop));
  CHECK(visits == 2);
  OptimizerStopRequested = false;
  visits = 0;
  SimulateEachSet(grid, history, stop);
  CHECK(visits == 2);
  OptimizerStopRequested = false;
}

}  // namespace dozewell
