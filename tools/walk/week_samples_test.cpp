#include "walk/week_samples.h"

#include <doctest/doctest.h>

#include "walk/score.h"

namespace dozewell {
namespace {

const std::vector<HistoryRecord> kHistory = {{100, 0, 0}, {200, 1, 0}, {300, 0, 0}};
const std::vector<HistoryRecord> kOtherHistory = {{100, 0, 0}, {200, 1, 0}, {301, 0, 0}};

// Weeks with so many resumes from sleep and from hibernation, always as long.
std::vector<Outcomes> Weeks(std::initializer_list<std::pair<int32_t, int32_t>> resumes) {
  std::vector<Outcomes> weeks;
  for (const auto& [fromSleep, fromHibernate] : resumes) {
    weeks.push_back({100, 300, fromSleep, fromHibernate});
  }
  return weeks;
}

}  // namespace

TEST_CASE("a score weighs resumes from sleep against time hibernated") {
  const Outcomes outcomes = {100, 300, 1, 3};
  CHECK(ScoreOf(outcomes, 100) == 25);
  CHECK(ScoreOf(outcomes, 0) == 75);
  CHECK(ScoreOf(outcomes, 60) == 45);
}

TEST_CASE("without a resume or without time there is no score") {
  CHECK(ScoreOf({100, 300, 0, 0}, 50) == std::nullopt);
  CHECK(ScoreOf({0, 0, 1, 0}, 50) == std::nullopt);
}

TEST_CASE("weeks that are all alike leave no range") {
  const auto weeks = Weeks({{1, 3}, {1, 3}, {1, 3}});
  CHECK(WeekSamples(kHistory, 3).RangeOf(weeks, 100) == ScoreRange{25, 25, 25});
}

TEST_CASE("a range lies around the score and is wider for fewer weeks") {
  const WeekSamples few(kHistory, 4);
  const auto range = few.RangeOf(Weeks({{0, 4}, {4, 0}, {0, 4}, {4, 0}}), 100);
  REQUIRE(range);
  // Of 1000 draws of four weeks, some 63 have only one kind of them.
  CHECK(*range == ScoreRange{50, 0, 100});

  std::vector<Outcomes> many;
  for (int i = 0; i < 50; ++i) {
    many.push_back({100, 300, 0, 4});
    many.push_back({100, 300, 4, 0});
  }
  const auto narrow = WeekSamples(kHistory, many.size()).RangeOf(many, 100);
  REQUIRE(narrow);
  CHECK(narrow->score == 50);
  // Two standard deviations of the mean of a hundred coins are ten per cent.
  CHECK(narrow->low > 37);
  CHECK(narrow->low < 43);
  CHECK(narrow->high > 57);
  CHECK(narrow->high < 63);
}

TEST_CASE("samples depend on the history alone") {
  std::vector<Outcomes> weeks;
  weeks.reserve(20);
  for (int32_t i = 0; i < 20; ++i) weeks.push_back({100 + 13 * i, 300, i * i % 7, i % 5});
  const auto range = WeekSamples(kHistory, 20).RangeOf(weeks, 70);
  CHECK(WeekSamples(kHistory, 20).RangeOf(weeks, 70) == range);
  CHECK(WeekSamples(kOtherHistory, 20).RangeOf(weeks, 70) != range);
}

TEST_CASE("without a resume there is no range") {
  CHECK(WeekSamples(kHistory, 0).RangeOf({}, 50) == std::nullopt);
  CHECK(WeekSamples(kHistory, 1).RangeOf(std::vector<Outcomes>{{100, 0, 0, 0}}, 50) ==
        std::nullopt);
}

}  // namespace dozewell
