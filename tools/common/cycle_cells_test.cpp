#include "common/cycle_cells.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <limits>
#include <vector>

#include "prediction/tracker.h"

namespace dozewell {
namespace {

using Cells = std::vector<CycleCells::Cell>;

// Slots of these probabilities, each of which was seen three times.
std::vector<SlotKnowledge> SlotsOf(const std::vector<float>& probabilities) {
  std::vector<SlotKnowledge> slots;
  slots.reserve(probabilities.size());
  for (const float probability : probabilities) slots.push_back({probability, 3});
  return slots;
}

}  // namespace

TEST_CASE("a week has a row for each day from Monday on, with 48 cells") {
  std::vector<float> probabilities(7 * 144, kUnknownProbability);
  // The first slot is a Thursday's.
  probabilities[0] = 0.5F;
  probabilities[4 * 144 + 143] = 1.0F;
  const auto map = MakeCycleCells({7, 1440, 10}, SlotsOf(probabilities));
  REQUIRE(map);
  CHECK(map->cellMinutes == 30);
  std::vector<std::string> names;
  std::vector<int> days;
  for (const CycleCells::Row& row : map->rows) {
    names.push_back(row.name);
    days.push_back(row.day);
    CHECK(row.cells.size() == 48);
  }
  CHECK(names == std::vector<std::string>{"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"});
  CHECK(days == std::vector<int>{4, 5, 6, 0, 1, 2, 3});
  CHECK(map->rows[3].cells[0] == CycleCells::Cell{0.5, 3});
  CHECK(map->rows[3].cells[1] == CycleCells::Cell{std::nullopt, 0});
  CHECK(map->rows[0].cells[47].likely == 1.0);
}

TEST_CASE("a cell is the mean of its minutes that are known, held between 0 and 1") {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  // Cells of two minutes, so that one has a part of two slots.
  const std::vector<float> probabilities = {1.0F, 0.0F, nan, 5.0F, -0.5F, 0.25F};
  const auto map = MakeCycleCells({2, 60, 20}, SlotsOf(probabilities));
  REQUIRE(map);
  CHECK(map->cellMinutes == 2);
  REQUIRE(map->rows.size() == 2);
  CHECK(map->rows[0].name == "day 0");
  CHECK(map->rows[1].name == "day 1");
  const Cells& first = map->rows[0].cells;
  const Cells& second = map->rows[1].cells;
  CHECK(first.size() == 30);
  CHECK(first[9].likely == 1.0);
  CHECK(first[10].likely == 0.0);
  CHECK(first[20].likely == std::nullopt);
  CHECK(second[0].likely == 1.0);
  CHECK(second[10].likely == 0.0);
  CHECK(second[29].likely == 0.25);
  const std::vector<float> quarters = {1.0F, 0.0F, 0.0F, 0.0F};
  CHECK(MakeCycleCells({1, 60, 15}, SlotsOf(quarters))->rows[0].cells[7].likely == 0.5);
}

TEST_CASE("a cell was seen as often as the least seen of its minutes that are known") {
  const std::vector<SlotKnowledge> slots = {
      {0.5F, 9}, {0.5F, 4}, {kUnknownProbability, 0}, {0.5F, 12}};
  const auto map = MakeCycleCells({1, 96, 1}, std::vector<SlotKnowledge>(96, {0.5F, 2}));
  CHECK(map->rows[0].cells[0].seen == 2);
  const auto four = MakeCycleCells({1, 60, 15}, slots);
  const Cells& cells = four->rows[0].cells;
  CHECK(cells[0].seen == 9);
  // Its minutes are one of each quarter of an hour.
  CHECK(cells[7].seen == 4);
  CHECK(cells[20].seen == 0);
  CHECK(cells[22].seen == 12);
}

TEST_CASE("a cycle that is not one of whole days has no cells") {
  const std::vector<SlotKnowledge> slots(7, {0.5F, 1});
  CHECK_FALSE(MakeCycleCells({1, 60, 0}, slots));
  CHECK_FALSE(MakeCycleCells({1, 60, 7}, slots));
  CHECK_FALSE(MakeCycleCells({-1, 1440, 30}, slots));
  CHECK_FALSE(MakeCycleCells({1, 7000, 1000}, slots));
  CHECK_FALSE(MakeCycleCells({1, 8, 1}, slots));
  CHECK_FALSE(MakeCycleCells({1, 6001, 1}, std::vector<SlotKnowledge>(6001)));
  CHECK(MakeCycleCells({1, 6000, 1}, std::vector<SlotKnowledge>(6000)));
}

}  // namespace dozewell
