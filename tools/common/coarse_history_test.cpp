#include "common/coarse_history.h"

#include <doctest/doctest.h>

#include <string>

namespace dozewell {
namespace {

// "60 asleep, 120 in use" for pairs of a time and whether the machine was asleep from then on.
std::string Coarse(const std::vector<HistoryRecord>& records, int64_t weeks = 0) {
  std::string text;
  for (const HistoryRecord& record : CoarseHistory(records, weeks)) {
    text += (text.empty() ? "" : ", ") + std::to_string(static_cast<int64_t>(record.time)) +
            (record.asleep != 0 ? " asleep" : " in use");
  }
  return text;
}

}  // namespace

TEST_CASE("times are cut to the minute") {
  CHECK(Coarse({{0, 0, 7}, {59.5, 0, 0}, {119, 1, 0}, {180, 0, 0}}) ==
        "0 in use, 60 asleep, 180 in use");
  CHECK(CoarseHistory(std::vector<HistoryRecord>{{61, 3, 9}}, 0)[0].asleep == 3);
  CHECK(CoarseHistory(std::vector<HistoryRecord>{{61, 3, 9}}, 0)[0].reserved == 0);
}

TEST_CASE("a sleep or a use within one minute is left out, and the rest alternates as before") {
  CHECK(Coarse({{0, 0, 0}, {60, 1, 0}, {100, 0, 0}, {300, 1, 0}}) == "0 in use, 300 asleep");
  CHECK(Coarse({{0, 1, 0}, {60, 0, 0}, {119, 1, 0}, {300, 0, 0}}) == "0 asleep, 300 in use");
  CHECK(Coarse({{0, 0, 0}, {60, 1, 0}, {70, 0, 0}, {80, 1, 0}, {300, 0, 0}}) ==
        "0 in use, 60 asleep, 300 in use");
  CHECK(Coarse({{0, 0, 0}, {60, 1, 0}, {70, 0, 0}, {80, 1, 0}, {90, 0, 0}}) == "0 in use");
  CHECK(Coarse({}).empty());
}

TEST_CASE("times are moved by whole weeks") {
  CHECK(Coarse({{86400 * 7 + 61, 0, 0}}, -1) == "60 in use");
  CHECK(Coarse({{61, 0, 0}}, 2) == "1209660 in use");
}

}  // namespace dozewell
