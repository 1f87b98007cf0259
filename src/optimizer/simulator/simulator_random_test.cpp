#include <doctest/doctest.h>

#include <exception>
#include <string>
#include <vector>

#include "optimizer/simulator/parameter_grid.h"
#include "optimizer/simulator/simulator.h"
#include "plain_simulator.h"
#include "support/random_histories.h"
#include "support/sim_days.h"

namespace dozewell {
namespace {

// The time line that a simulation gives, or the one text "exception".
template <typename Simulate>
std::vector<std::string> TextsOrError(Simulate simulate) {
  try {
    return SimTexts(simulate());
  } catch (const std::exception&) {
    return {"exception"};
  }
}

ParameterSet DrawSet(RandomHistories& random) {
  const auto number = [&random] { return static_cast<int32_t>(random.Between(0, 49)); };
  const int32_t first = number();
  const int32_t second = random.Chance(10) ? -2 - first : number();
  return {{random.OneOf<int32_t>({0, 30, 50, 70, 100, 130}),
           random.OneOf<int32_t>({-10, 0, 20, 50, 80, 101})},
          {first, second, 100 - first - second},
          random.OneOf<int32_t>({0, 12, 115, 127, 255, -1, 85})};
}

}  // namespace

TEST_CASE("the simulator gives what a plain reading of its rules gives") {
  RandomHistories random(1);
  int64_t scheduled = 0;
  int exceptions = 0;
  for (int round = 0; round < 1000; ++round) {
    CAPTURE(round);
    const std::vector<HistoryRecord> history =
        random.Chance(40) ? random.Written() : random.Hostile();
    NativeSimulatorConfigurations parameters = ConfigurationsOf(DrawSet(random));
    const auto expected = TextsOrError([&] { return SimulatePlainly(parameters, history); });
    CHECK(TextsOrError([&] { return SimulatePredictor(parameters, history); }) == expected);
    for (const std::string& text : expected) {
      if (text.ends_with(" 5")) ++scheduled;
      if (text == "exception") ++exceptions;
    }
  }
  // Enough of the rounds were worth comparing.
  CHECK(scheduled > 3000);
  CHECK(exceptions > 100);
  CHECK(exceptions < 500);
}

}  // namespace dozewell
