#include "fleet/totals.h"

#include <doctest/doctest.h>

namespace dozewell::fleet {
namespace {

constexpr int32_t kHour = 3600;

// The users' own timeout and the service with two strengths.
FleetQuestion Question() {
  FleetQuestion question;
  question.userTimeoutSeconds = 600;
  question.weights = {10, 50};
  question.strength = 1;
  question.choices = {{"10 minutes", WalkedKind::Fixed, {}, 10},
                      {"service, strength 0", WalkedKind::Service, 0},
                      {"service, strength 1", WalkedKind::Service, 1}};
  return question;
}

MachineRow Row(const std::string& path, const Outcomes& own, const Outcomes& low,
               const Outcomes& high) {
  MachineRow row;
  row.path = path;
  row.records = 2;
  row.from = 100;
  row.to = 700000;
  row.outcomes = {own, low, high};
  return row;
}

constexpr Outcomes kOwn = {kHour, 9 * kHour, 5, 5};        // 45 + 25 points at 50
constexpr Outcomes kBetter = {kHour, 9 * kHour, 8, 2};     // 45 + 40
constexpr Outcomes kWorse = {5 * kHour, 5 * kHour, 5, 5};  // 25 + 25

}  // namespace

TEST_CASE("Machines are added up, all and by group") {
  const FleetQuestion question = Question();
  const Groups groups("a,A\n", "g");
  FleetTotals totals(question, groups);
  totals.Add(Row("a/1.csv", kOwn, kBetter, kWorse));
  totals.Add(Row("b/2.csv", kOwn, kOwn, kOwn));
  CHECK(totals.All().machines == 2);
  CHECK(totals.All().sums[1] == OutcomeSums{2 * kHour, 18 * kHour, 13, 7});
  CHECK(totals.ByGroup().at("A").sums[2] == OutcomeSums{5 * kHour, 5 * kHour, 5, 5});
  CHECK(totals.ByGroup().at(kNoGroup).machines == 1);
}

TEST_CASE("A broken history is in no sum") {
  const FleetQuestion question = Question();
  const Groups groups;
  FleetTotals totals(question, groups);
  totals.Add({"x.csv", "line 1"});
  CHECK(totals.All().machines == 0);
  CHECK(totals.Broken().size() == 1);
  CHECK(totals.To() == 0);
}

TEST_CASE("Sums do not overflow 32 bits") {
  const FleetQuestion question = Question();
  const Groups groups;
  FleetTotals totals(question, groups);
  const Outcomes many = {1, 1, INT32_MAX, INT32_MAX};
  for (int i = 0; i < 3; ++i) totals.Add(Row("x", many, many, many));
  CHECK(totals.All().sums[0].resumesFromHibernate == 3 * int64_t{INT32_MAX});
}

TEST_CASE("Those are listed who lose by the strength in force, most first") {
  const FleetQuestion question = Question();
  const Groups groups;
  FleetTotals totals(question, groups);
  totals.Add(Row("gains", kOwn, kWorse, kBetter));
  totals.Add(Row("same", kOwn, kWorse, kOwn));
  for (int i = 0; i < 150; ++i) {
    const Outcomes worse = {kHour * 2 + i, 8 * kHour - i, 5, 5};
    totals.Add(Row("loses " + std::to_string(i), kOwn, kBetter, worse));
  }
  CHECK(totals.NumberOfLosers() == 150);
  REQUIRE(totals.Losers().size() == kMostLosers);
  CHECK(totals.Losers().front().path == "loses 149");
  CHECK(totals.Losers().back().path == "loses 50");
  CHECK(totals.Losers().front().gain < totals.Losers().back().gain);
}

TEST_CASE("The strength is recommended that saves most without more waiting") {
  const FleetQuestion question = Question();
  const EnergyRates rates;
  GroupTotals group = {1, {{100, 100, 5, 5}, {10, 190, 4, 6}, {50, 150, 6, 4}}};
  Recommendation best = Recommend(question, group, WalkedKind::Service, rates).value();
  CHECK(best.strength == 1);
  CHECK(best.isWithinWaits);
  group.sums[1].resumesFromHibernate = 5;
  CHECK(Recommend(question, group, WalkedKind::Service, rates)->strength == 0);
}

TEST_CASE("Where all make wait more, the strength is recommended that makes wait least") {
  const FleetQuestion question = Question();
  const GroupTotals group = {1, {{100, 100, 5, 5}, {10, 190, 3, 7}, {50, 150, 4, 6}}};
  const auto best = Recommend(question, group, WalkedKind::Service, EnergyRates());
  REQUIRE(best);
  CHECK(best->strength == 1);
  CHECK_FALSE(best->isWithinWaits);
  CHECK_FALSE(Recommend(question, group, WalkedKind::Rates, EnergyRates()));
}

}  // namespace dozewell::fleet
