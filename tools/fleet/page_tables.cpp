#include "fleet/page_tables.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

#include "common/hours_text.h"
#include "common/html.h"
#include "fleet/result_text.h"

namespace dozewell::fleet {
namespace {

constexpr int kKilowattHourDecimals = 0;
constexpr int kCostDecimals = 2;
constexpr int kScoreDecimals = 1;

std::string Number(const std::string& text) {
  return HtmlElement("td", {{"class", "number"}}, HtmlText(text));
}
std::string Number(int64_t number) { return Number(std::to_string(number)); }

std::string Words(std::string_view text) { return HtmlElement("td", HtmlText(text)); }

// Of any length, and perhaps without a place to break.
std::string LongText(std::string_view text) {
  return HtmlElement("td", {{"class", "long"}}, HtmlText(text));
}

std::string Row(std::string_view name, const std::string& cells, const char* cssClass = "") {
  return HtmlElement("tr", {{"class", cssClass}},
                     HtmlElement("th", {{"scope", "row"}}, HtmlText(name)) + cells) +
         "\n";
}

struct Column {
  std::string name;
  bool isNumber = true;
};

Column WordsColumn(const char* name) { return {name, false}; }

std::string Table(const char* caption, const std::vector<Column>& columns,
                  const std::string& rows) {
  std::string head;
  for (const Column& column : columns) {
    head += HtmlElement("th", {{"scope", "col"}, {"class", column.isNumber ? "number" : ""}},
                        HtmlText(column.name));
  }
  // A wide table scrolls by itself, so the page does not; the keyboard has to reach it for that.
  return HtmlElement(
             "div",
             {{"class", "wide"}, {"tabindex", "0"}, {"role", "region"}, {"aria-label", caption}},
             HtmlElement("table", {{"class", "fleet"}},
                         HtmlElement("caption", HtmlText(caption)) +
                             HtmlElement("thead", HtmlElement("tr", head)) +
                             HtmlElement("tbody", "\n" + rows))) +
         "\n";
}

std::string OutcomeCells(const OutcomeSums& sums, const EnergyRates& rates) {
  return Number(HoursText(sums.sleepSeconds)) + Number(HoursText(sums.hibernateSeconds)) +
         Number(sums.resumesFromSleep) + Number(sums.resumesFromHibernate) +
         Number(DecimalText(rates.KilowattHours(sums), kKilowattHourDecimals)) +
         Number(DecimalText(rates.Cost(sums), kCostDecimals));
}

std::string StrengthRow(const std::string& group, const GroupTotals& totals,
                        const FleetQuestion& question, const char* predictor, WalkedKind kind,
                        const EnergyRates& rates) {
  const auto recommended = Recommend(question, totals, kind, rates);
  if (!recommended) return {};
  const OutcomeSums& own = totals.sums[question.Own()];
  const OutcomeSums& with = totals.sums[recommended->choice];
  const auto energy = [&rates](const OutcomeSums& sums) {
    return Number(DecimalText(rates.KilowattHours(sums), kKilowattHourDecimals));
  };
  return Row(group, Number(totals.machines) + Words(predictor) +
                        Words(StrengthText(question, recommended->strength)) + energy(own) +
                        energy(with) + Number(own.resumesFromHibernate) +
                        Number(with.resumesFromHibernate));
}

// A count over a bar as long as its share of all.
std::string Counted(int64_t count, int64_t all) {
  const double percent = all == 0 ? 0 : 100 * static_cast<double>(count) / static_cast<double>(all);
  const std::string width = "width:" + DecimalText(percent, 2) + "%";
  return HtmlElement(
      "td", {{"class", "number"}},
      std::to_string(count) + HtmlElement("i", {{"class", "share"}, {"style", width}}, ""));
}

}  // namespace

std::string ChoicesTable(const FleetTotals& totals, const EnergyRates& rates) {
  const FleetQuestion& question = totals.Question();
  const size_t own = question.Own();
  std::string rows;
  for (size_t i = 0; i < question.choices.size(); ++i) {
    rows += Row(question.choices[i].name + (i == own ? " (the users' own)" : ""),
                OutcomeCells(totals.All().sums[i], rates), i == own ? "own" : "");
  }
  return Table("All machines",
               {WordsColumn("choice"),
                {"hours asleep"},
                {"hours hibernated"},
                {"ready at once"},
                {"had to wait"},
                {"kWh"},
                {"money"}},
               rows);
}

std::string StrengthsTable(const FleetTotals& totals, const EnergyRates& rates) {
  std::string rows;
  for (const auto& [name, group] : totals.ByGroup()) {
    rows += StrengthRow(name, group, totals.Question(), "slots", WalkedKind::Service, rates) +
            StrengthRow(name, group, totals.Question(), "rates", WalkedKind::Rates, rates);
  }
  return Table("Recommended strengths",
               {WordsColumn("group"),
                {"machines"},
                WordsColumn("predictor"),
                WordsColumn("recommended"),
                {"kWh now"},
                {"kWh then"},
                {"waits now"},
                {"waits then"}},
               rows);
}

std::string SpreadTable(const FleetTotals& totals, const char* caption,
                        Distribution Spread::*distribution) {
  const std::vector<SpreadOfChoice>& spreads = totals.Spreads();
  std::vector<Column> columns = {WordsColumn("")};
  for (const SpreadOfChoice& spread : spreads) {
    columns.push_back({totals.Question().choices[spread.choice].name});
  }
  const Distribution& first = spreads.front().spread.*distribution;
  std::string rows;
  for (size_t bin = 0; bin < first.Counts().size(); ++bin) {
    std::string cells;
    for (const SpreadOfChoice& spread : spreads) {
      cells += Counted((spread.spread.*distribution).Counts()[bin], totals.All().machines);
    }
    rows += Row(first.BinText(bin), cells);
  }
  return Table(caption, columns, rows);
}

std::string LosersTable(const FleetTotals& totals) {
  const auto bounds = [](const std::optional<ScoreBounds>& of) {
    constexpr double kThousand = 1000;
    return of ? DecimalText(static_cast<double>(of->low) / kThousand, kScoreDecimals) + " to " +
                    DecimalText(static_cast<double>(of->high) / kThousand, kScoreDecimals)
              : "";
  };
  std::string rows;
  for (const Loser& loser : totals.Losers()) {
    rows += Row(MachineName(loser.path),
                Number(DecimalText(loser.gain, kScoreDecimals)) + Number(bounds(loser.bounds)) +
                    Number(HoursText(loser.own.sleepSeconds)) +
                    Number(HoursText(loser.service.sleepSeconds)) +
                    Number(loser.own.resumesFromHibernate) +
                    Number(loser.service.resumesFromHibernate) + Number(loser.records) +
                    Words(DayText(loser.to)) + LongText(loser.path));
  }
  return Table("Machines that lose most",
               {WordsColumn("machine"),
                {"points"},
                {"score then"},
                {"asleep now"},
                {"asleep then"},
                {"waits now"},
                {"waits then"},
                {"records"},
                WordsColumn("data to"),
                WordsColumn("history")},
               rows);
}

std::string NotedTable(const char* caption, const std::vector<NotedHistory>& histories) {
  std::string rows;
  for (const auto& [path, what] : histories) {
    rows += Row(MachineName(path), LongText(what) + LongText(path));
  }
  return Table(caption,
               {WordsColumn("machine"), WordsColumn("what is wrong"), WordsColumn("history")},
               rows);
}

}  // namespace dozewell::fleet
