#include "fleet/distribution.h"

#include <doctest/doctest.h>

#include "base/wall_clock.h"

namespace dozewell::fleet {
namespace {

constexpr int32_t kEdges[] = {0, 5, 10};

std::vector<int64_t> CountsOf(const Distribution& distribution) {
  return {distribution.Counts().begin(), distribution.Counts().end()};
}

}  // namespace

TEST_CASE("A bin ends with its upper edge") {
  Distribution distribution(kEdges);
  for (const int64_t dividend : {0, 1, 50, 51, 100, 101}) distribution.Count(dividend, 10);
  CHECK(CountsOf(distribution) == std::vector<int64_t>{1, 2, 2, 1});
  distribution.Count(-3.0);
  distribution.Count(10.0);
  distribution.Count(1e9);
  CHECK(CountsOf(distribution) == std::vector<int64_t>{2, 2, 3, 2});
}

TEST_CASE("A figure of nothing is not counted") {
  Distribution distribution(kEdges);
  distribution.Count(7, 0);
  CHECK(CountsOf(distribution) == std::vector<int64_t>{0, 0, 0, 0});
}

TEST_CASE("Bins have names") {
  const Distribution distribution(kEdges);
  CHECK(distribution.BinText(0) == "0");
  CHECK(distribution.BinText(1) == "0 to 5");
  CHECK(distribution.BinText(3) == "above 10");
  CHECK(Spread().gain.BinText(0) == "up to -20");
}

TEST_CASE("Waits are counted by the week and hibernation by the time off") {
  Spread spread;
  MachineRow row;
  row.to = 14 * kSecondsPerDay;
  row.outcomes = {{300, 700, 5, 4}};
  spread.Count(row, 0, 1.5);
  CHECK(spread.waitsPerWeek.Counts()[2] == 1);       // 2 a week
  CHECK(spread.hibernatedPercent.Counts()[6] == 1);  // 70 per cent
  CHECK(spread.gain.Counts()[5] == 1);               // up to 2 points
}

}  // namespace dozewell::fleet
