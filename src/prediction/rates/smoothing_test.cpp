#include "prediction/rates/smoothing.h"

#include <doctest/doctest.h>

#include <vector>

#include "support/sleeps.h"

namespace dozewell {
TEST_CASE("a bell reaches as far as three sigmas") {
  CHECK(Bell(0.5).Reach() == 1);
  CHECK(Bell(1.75).Reach() == 5);
  CHECK(Bell(5).Reach() == 15);
}

TEST_CASE("in a line a number spreads to both sides and not around the ends") {
  std::vector<double> numbers = {0, 1, 0, 0, 0};
  Smooth(numbers, 1, Ends::Open, Bell(1.5, 2));
  CHECK(numbers[0] == doctest::Approx(BellAt(1, 1.5)));
  CHECK(numbers[1] == 1);
  CHECK(numbers[2] == doctest::Approx(BellAt(1, 1.5)));
  CHECK(numbers[3] == doctest::Approx(BellAt(2, 1.5)));
  CHECK(numbers[4] == 0);
}

TEST_CASE("where its ends are joined a number spreads around them") {
  std::vector<double> numbers = {1, 0, 0, 0, 0, 0};
  Smooth(numbers, 1, Ends::Joined, Bell(1, 2));
  CHECK(numbers[1] == numbers[5]);
  CHECK(numbers[2] == numbers[4]);
  CHECK(numbers[4] == doctest::Approx(BellAt(2, 1)));
  CHECK(numbers[3] == 0);
}

TEST_CASE("rows side by side are smoothed each for itself") {
  for (const Ends ends : {Ends::Open, Ends::Joined}) {
    std::vector<double> first = {1, 2, 4, 8, 16, 32, 64};
    std::vector<double> second = {3, 1, 4, 1, 5, 9, 2};
    std::vector<double> both;
    for (size_t i = 0; i < first.size(); ++i) {
      both.push_back(first[i]);
      both.push_back(second[i]);
    }
    const Bell bell(1.2, 3);
    Smooth(first, 1, ends, bell);
    Smooth(second, 1, ends, bell);
    Smooth(both, 2, ends, bell);
    for (size_t i = 0; i < first.size(); ++i) {
      CHECK(both[2 * i] == first[i]);
      CHECK(both[2 * i + 1] == second[i]);
    }
  }
}

}  // namespace dozewell
