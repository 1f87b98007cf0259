#include "report/walked_table.h"

#include "common/format_text.h"
#include "common/hours_text.h"
#include "common/html.h"

namespace dozewell::report {
namespace {

std::string NumberCell(const std::string& html) {
  return HtmlElement("td", {{"class", "number"}}, html);
}

// "79.1 (74.0 to 83.2)", which may be broken before the range only.
std::string PointsHtml(const std::optional<ScoreRange>& points, bool hasRanges) {
  if (!points) return "none";
  std::string score = PointsText(points->score);
  if (!hasRanges) return score;
  const std::string range = "(" + PointsText(points->low) + " to " + PointsText(points->high) + ")";
  return score + " " + HtmlElement("span", {{"class", "range"}}, range);
}

std::string ChoiceRow(const WalkedHistory& history, const WalkedRow& row) {
  const Outcomes& outcomes = row.choice.outcomes;
  const bool isMachine = &row.choice == &history.Machine(true);
  return HtmlElement("tr", {{"class", isMachine ? "chosen" : "choice"}},
                     HtmlElement("th", {{"scope", "row"}}, HtmlText(row.name)) +
                         NumberCell(HoursText(outcomes.sleepSeconds)) +
                         NumberCell(std::to_string(outcomes.resumesFromHibernate)) +
                         NumberCell(PointsHtml(history.Points(row.choice), history.HasRanges()))) +
         "\n";
}

std::string TitleRow(const char* title) {
  return HtmlElement(
      "tr", HtmlElement("th", {{"scope", "rowgroup"}, {"colspan", "4"}, {"class", "group"}},
                        HtmlText(title)));
}

}  // namespace

const WalkedChoice& WalkedHistory::Machine(bool canWake) const {
  if (!strength) return walk.Of(WalkedKind::Settings, 0);
  if (predictor == PredictorKind::Rates) {
    return AtStrength(canWake ? WalkedKind::Rates : WalkedKind::RatesWithoutWake);
  }
  return AtStrength(canWake ? WalkedKind::Service : WalkedKind::ServiceWithoutWake);
}

std::optional<ScoreRange> WalkedHistory::Points(const WalkedChoice& choice) const {
  if (!strength) return std::nullopt;
  return samples.RangeOf(choice.weeks, walk.weights[*strength]);
}

std::string PointsText(double points) { return FormatText("%.1f", points); }

std::string WalkedTable(const char* caption, const WalkedHistory& history,
                        const std::vector<WalkedRows>& groups) {
  std::string head = "<td></td>";
  for (const char* const title : {"hours asleep", "had to wait", "points"}) {
    head += HtmlElement("th", {{"scope", "col"}}, title);
  }
  std::string bodies;
  for (const WalkedRows& group : groups) {
    std::string rows;
    if (group.title != nullptr) rows += TitleRow(group.title);
    for (const WalkedRow& row : group.rows) rows += ChoiceRow(history, row);
    bodies += HtmlElement("tbody", rows);
  }
  return HtmlElement("table", {{"class", "gain"}},
                     HtmlElement("caption", {{"class", "unseen"}}, HtmlText(caption)) +
                         HtmlElement("thead", HtmlElement("tr", head)) + bodies);
}

}  // namespace dozewell::report
