#include "common/clairvoyant.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "base/exception.h"
#include "optimizer/simulator/parameter_grid.h"
#include "optimizer/simulator/simulator.h"
#include "support/random_histories.h"
#include "support/sim_days.h"

namespace dozewell {
namespace {

// One sleep, between uses.
std::vector<HistoryRecord> OneSleep(const HistoryRecord& sleep, const HistoryRecord& use) {
  return {SimRecord(0, 0, 8), sleep, use, SimRecord(1, 9, 0)};
}

// What lies between the start of that sleep and its end.
std::vector<std::string> Within(const HistoryRecord& sleep, const HistoryRecord& use) {
  std::vector<std::string> texts = SimTexts(SimulateClairvoyant(OneSleep(sleep, use)));
  texts.erase(texts.begin(), texts.begin() + 2);
  texts.resize(texts.size() - 2);
  return texts;
}

Outcomes OutcomesOf(const SimTimeLine& timeLine) {
  Outcomes outcomes;
  CountOutcomes(timeLine, outcomes);
  return outcomes;
}

}  // namespace

TEST_CASE("a clairvoyant hibernates between the first slot's start and the last one's") {
  CHECK(SimTexts(SimulateClairvoyant(OneSleep(SimRecord(1, 0, 17, 4), SimRecord(0, 1, 8, 7)))) ==
        std::vector<std::string>{"0 08:00 0", "0 17:04 2", "0 17:10 5", "1 08:00 6", "1 08:07 0",
                                 "9 00:00 2"});
}

TEST_CASE("a clairvoyant predicts whole minutes") {
  CHECK(Within(SimRecord(1, 0, 17, 4, 30), SimRecord(0, 1, 8, 7, 5)) ==
        std::vector<std::string>{"0 17:10:30 5", "1 08:00 6"});
}

TEST_CASE("a clairvoyant takes no slot that starts with the sleep or with the user") {
  CHECK(Within(SimRecord(1, 0, 17, 10), SimRecord(0, 1, 8, 0)) ==
        std::vector<std::string>{"0 17:20 5", "1 07:50 6"});
}

TEST_CASE("a clairvoyant leaves a sleep alone that has no idle stretch of 30 minutes") {
  CHECK(Within(SimRecord(1, 0, 17, 4), SimRecord(0, 0, 17, 40, 1)) ==
        std::vector<std::string>{"0 17:10 5", "0 17:40 6"});
  CHECK(Within(SimRecord(1, 0, 17, 4), SimRecord(0, 0, 17, 40)).empty());
  CHECK(Within(SimRecord(1, 0, 17, 4), SimRecord(0, 0, 17, 5)).empty());
}

TEST_CASE("a clairvoyant predicts nothing for a sleep that nothing follows") {
  CHECK(SimTexts(SimulateClairvoyant(std::vector{SimRecord(0, 0, 8), SimRecord(1, 0, 9),
                                                 SimRecord(0, 0, 9, 5), SimRecord(1, 1, 0)})) ==
        std::vector<std::string>{"0 08:00 0", "0 09:00 2", "0 09:05 0", "1 00:00 2"});
  CHECK(SimulateClairvoyant(std::vector{SimRecord(0, 0, 8), SimRecord(1, 0, 9)}).empty());
}

TEST_CASE("a clairvoyant refuses codes as a fixed timeout does") {
  const std::vector<HistoryRecord> history = {SimRecord(0, 0, 8), SimRecord(4, 0, 9),
                                              SimRecord(0, 0, 10)};
  CHECK_THROWS_AS(SimulateClairvoyant(history), FixedTextException);
}

TEST_CASE("no predictor hibernates longer than a clairvoyant, unless its user waits") {
  // What a wait can save at most: all of a sleep that has no idle stretch.
  constexpr int64_t kSecondsPerWait = 50 * 60;
  RandomHistories random(1);
  int compared = 0;
  for (int round = 0; round < 1000; ++round) {
    CAPTURE(round);
    std::vector<HistoryRecord> history = random.Written();
    if (!history.empty() && history.front().asleep != 0) history.erase(history.begin());
    const auto first = static_cast<int32_t>(random.Between(0, 99));
    const auto second = static_cast<int32_t>(random.Between(0, 99 - first));
    const auto high = random.OneOf<int32_t>({5, 30, 50, 70, 100});
    NativeSimulatorConfigurations parameters =
        ConfigurationsOf({{high, static_cast<int32_t>(random.Between(0, high))},
                          {first, second, 100 - first - second},
                          random.OneOf<int32_t>({0, 12, 255})});
    const Outcomes predicted = OutcomesOf(SimulatePredictor(parameters, history));
    const Outcomes best = OutcomesOf(SimulateClairvoyant(history));
    CHECK(best.resumesFromHibernate == 0);
    CHECK(best.resumesFromSleep == predicted.resumesFromSleep + predicted.resumesFromHibernate);
    CHECK(best.sleepSeconds + best.hibernateSeconds ==
          predicted.sleepSeconds + predicted.hibernateSeconds);
    CHECK(best.sleepSeconds <=
          predicted.sleepSeconds + kSecondsPerWait * predicted.resumesFromHibernate);
    if (predicted.hibernateSeconds > 0) ++compared;
  }
  CHECK(compared > 300);
}

}  // namespace dozewell
