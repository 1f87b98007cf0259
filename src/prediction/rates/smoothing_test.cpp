#include "prediction/rates/smoothing.h"

#include <doctest/doctest.h>

#include <vector>

#include "support/sleeps.h"

namespace dozewell {
TEST_CASE("a bell reaches as far as three sigmas") {
  CHECK(BellOf(0.5).reach == 1);
  CHECK(BellOf(1.75).reach == 5);
  CHECK(BellOf(5).reach == 15);
}

TEST_CASE("in a line a number spreads to both sides and not around the ends") {
  std::vector<double> numbers = {0, 1, 0, 0, 0};
  Smooth(numbers, {0, 5, 1, false}, {1.5, 2});
  CHECK(numbers[0] == doctest::Approx(BellAt(1, 1.5)));
  CHECK(numbers[1] == 1);
  CHECK(numbers[2] == doctest::Approx(BellAt(1, 1.5)));
  CHECK(numbers[3] == doctest::Approx(BellAt(2, 1.5)));
  CHECK(numbers[4] == 0);
}

TEST_CASE("in a ring a number spreads around the ends") {
  std::vector<double> numbers = {1, 0, 0, 0, 0, 0};
  Smooth(numbers, {0, 6, 1, true}, {1, 2});
  CHECK(numbers[1] == numbers[5]);
  CHECK(numbers[2] == numbers[4]);
  CHECK(numbers[4] == doctest::Approx(BellAt(2, 1)));
  CHECK(numbers[3] == 0);
}

TEST_CASE("smoothing leaves the numbers between those of a row alone") {
  std::vector<double> numbers = {1, 7, 1, 7, 1, 7};
  Smooth(numbers, {0, 3, 2, false}, {1, 1});
  CHECK(numbers[0] == doctest::Approx(1 + BellAt(1, 1)));
  CHECK(numbers[2] == doctest::Approx(1 + 2 * BellAt(1, 1)));
  CHECK(numbers[1] == 7);
  CHECK(numbers[5] == 7);
}

}  // namespace dozewell
