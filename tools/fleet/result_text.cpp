#include "fleet/result_text.h"

#include <algorithm>
#include <array>

#include "base/wall_clock.h"
#include "common/hours_text.h"
#include "common/local_time.h"
#include "common/text.h"

namespace dozewell::fleet {
namespace {

constexpr int kTableEnergyDecimals = 1;
constexpr int kTableCostDecimals = 2;
constexpr size_t kNameWidth = 34;

std::string Left(std::string text, size_t width) {
  text.resize(std::max(text.size(), width), ' ');
  return text;
}

std::string TableLine(const std::string& name, const std::array<std::string, 6>& cells) {
  constexpr size_t kCellWidth = 13;
  std::string line = Left(name, kNameWidth);
  for (const std::string& cell : cells) {
    line += std::string(kCellWidth - std::min(kCellWidth, cell.size()), ' ') + cell;
  }
  return line + '\n';
}

std::string TableOf(const GroupTotals& totals, const FleetQuestion& question,
                    const EnergyRates& rates) {
  std::string table = TableLine("", {"hours", "hours", "ready", "had", "", ""}) +
                      TableLine("", {"asleep", "hibernated", "at once", "to wait", "kWh", "money"});
  for (size_t i = 0; i < totals.sums.size(); ++i) {
    const OutcomeSums& sums = totals.sums[i];
    table +=
        TableLine(question.choices[i].name,
                  {HoursText(sums.sleepSeconds), HoursText(sums.hibernateSeconds),
                   std::to_string(sums.resumesFromSleep), std::to_string(sums.resumesFromHibernate),
                   DecimalText(rates.KilowattHours(sums), kTableEnergyDecimals),
                   DecimalText(rates.Cost(sums), kTableCostDecimals)});
  }
  return table;
}

std::string Recommended(const FleetTotals& totals, WalkedKind kind, const char* predictor,
                        const EnergyRates& rates) {
  std::string text;
  for (const auto& [name, group] : totals.ByGroup()) {
    const auto recommended = Recommend(totals.Question(), group, kind, rates);
    if (!recommended) continue;
    text += name + ", " + CountText(group.machines, "machine", "machines") + ", " + predictor +
            ": " + StrengthText(totals.Question(), recommended->strength) +
            (recommended->isWithinWaits ? "" : ", with more waiting than now") + '\n';
  }
  return text;
}

}  // namespace

Json TotalsJson(const FleetTotals& totals) {
  Json broken = Json::array();
  for (const auto& [path, what] : totals.Broken()) {
    broken.push_back({{"path", path}, {"reason", what}});
  }
  Json choices = Json::array();
  const FleetQuestion& question = totals.Question();
  for (size_t i = 0; i < question.choices.size(); ++i) {
    const OutcomeSums& sums = totals.All().sums[i];
    choices.push_back({{"name", question.choices[i].name},
                       {"sleepSeconds", sums.sleepSeconds},
                       {"hibernateSeconds", sums.hibernateSeconds},
                       {"resumesFromSleep", sums.resumesFromSleep},
                       {"resumesFromHibernate", sums.resumesFromHibernate}});
  }
  return {{"machines", totals.All().machines}, {"broken", broken}, {"choices", choices}};
}

std::string TotalsText(const FleetTotals& totals, const EnergyRates& rates) {
  const FleetQuestion& question = totals.Question();
  std::string text = CountText(totals.All().machines, "machine", "machines");
  if (!totals.Broken().empty()) text += ", " + std::to_string(totals.Broken().size()) + " broken";
  if (totals.To() != 0) text += ", " + DayText(totals.From()) + " to " + DayText(totals.To());
  text += "\n\n" + TableOf(totals.All(), question, rates);
  const std::string recommended = Recommended(totals, WalkedKind::Service, "slots", rates) +
                                  Recommended(totals, WalkedKind::Rates, "rates", rates);
  if (!recommended.empty()) text += "\nRecommended:\n" + recommended;
  return text;
}

std::string DayText(int64_t seconds) {
  constexpr size_t kDay = sizeof("2024-01-01") - 1;
  tm time;
  return TmFromSeconds(seconds, time) ? FormatLocalTime(time).substr(0, kDay) : "";
}

std::string StrengthText(const FleetQuestion& question, size_t strength) {
  return "strength " + std::to_string(strength) + " (weight " +
         std::to_string(question.weights.at(strength)) + ")";
}

}  // namespace dozewell::fleet
