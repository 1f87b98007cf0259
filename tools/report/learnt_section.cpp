#include "report/learnt_section.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>

#include "common/cycle_cells.h"
#include "common/format_text.h"
#include "common/html.h"
#include "common/slot_knowledge.h"
#include "common/text.h"
#include "report/day_groups_text.h"
#include "report/figure_text.h"

namespace dozewell::report {
namespace {

constexpr const char* kLearntId = "learnt";
constexpr const char* kLearntTitle = "What it has learnt, and how sure it is";
constexpr size_t kCellsPerLabel = 6;

// How sure what is known of a time can be.
struct Certainty {
  int64_t seen;  // at least so often
  const char* cssClass;
  const char* name;
};
constexpr Certainty kCertainties[] = {{0, "unknown", "not seen yet"},
                                      {1, "once", "seen once"},
                                      {2, "some", "seen 2 to 4 times"},
                                      {5, "often", "seen 5 times or more"}};
constexpr size_t kCertaintyCount = std::size(kCertainties);

// The position of a cell's certainty.
size_t CertaintyOf(const CycleCells::Cell& cell) {
  if (!cell.likely) return 0;
  size_t certainty = kCertaintyCount - 1;
  while (cell.seen < kCertainties[certainty].seen) --certainty;
  return certainty;
}

std::string ClockText(int minutes) { return FormatText("%02d:%02d", minutes / 60, minutes % 60); }

std::string SpanText(int first, int end) { return ClockText(first) + " to " + ClockText(end); }

// As short as possible, since a phone has little room.
std::string LabelText(int minutes) {
  const std::string text = ClockText(minutes);
  return minutes % 60 == 0 ? text.substr(0, text.find(':')) : text;
}

// "62 %, seen 7 times"
std::string CellText(const CycleCells::Cell& cell) {
  if (!cell.likely) return "not seen yet";
  return PercentText(*cell.likely) + " %, seen " +
         (cell.seen == 1 ? "once" : CountText(cell.seen, "time", "times"));
}

std::string MapCell(const std::string& when, const CycleCells::Cell& cell) {
  const std::string text = CellText(cell);
  return HtmlElement("td",
                     {{"class", kCertainties[CertaintyOf(cell)].cssClass},
                      {"style", "--likely:" + (cell.likely ? PercentText(*cell.likely) : "0")},
                      {"title", when + ": " + text}},
                     HtmlElement("span", {{"class", "unseen"}}, text));
}

std::string MapRow(const CycleCells::Row& row, int cellMinutes) {
  std::string cells = HtmlElement("th", {{"scope", "row"}}, HtmlText(row.name));
  int minute = 0;
  for (const CycleCells::Cell& cell : row.cells) {
    cells += MapCell(row.name + " " + SpanText(minute, minute + cellMinutes), cell);
    minute += cellMinutes;
  }
  return HtmlElement("tr", cells) + "\n";
}

std::string MapHead(const CycleCells& map) {
  std::string labels = HtmlElement("th", {{"scope", "col"}}, "Day");
  const size_t cells = map.rows.front().cells.size();
  for (size_t cell = 0; cell < cells; cell += kCellsPerLabel) {
    labels += HtmlElement("th",
                          {{"scope", "colgroup"},
                           {"colspan", std::to_string(std::min(kCellsPerLabel, cells - cell))}},
                          LabelText(static_cast<int>(cell) * map.cellMinutes));
  }
  return HtmlElement("thead", HtmlElement("tr", labels));
}

// A day in words; cells in a row of which the same is known are one.
std::string NumbersRow(const CycleCells::Row& row, int cellMinutes) {
  std::string list;
  const auto minuteOf = [&](auto cell) {
    return static_cast<int>(cell - row.cells.begin()) * cellMinutes;
  };
  for (auto first = row.cells.begin(); first != row.cells.end();) {
    const std::string text = CellText(*first);
    const auto end = std::find_if(first, row.cells.end(),
                                  [&](const auto& cell) { return CellText(cell) != text; });
    if (!list.empty()) list += "; ";
    list += SpanText(minuteOf(first), minuteOf(end)) + " " + text;
    first = end;
  }
  return ListRow(row.name, list);
}

std::string Numbers(const CycleCells& map) {
  std::string rows;
  for (const CycleCells::Row& row : map.rows) rows += NumbersRow(row, map.cellMinutes);
  return Fold("The same in numbers",
              ListTable("How likely it is in use, and how often that was seen", "Day",
                        "Times of day", rows));
}

// The share of the cycle that each certainty has.
std::string CertaintyText(const CycleCells& map) {
  std::array<size_t, kCertaintyCount> counts = {};
  size_t all = 0;
  for (const CycleCells::Row& row : map.rows) {
    for (const CycleCells::Cell& cell : row.cells) ++counts[CertaintyOf(cell)];
    all += row.cells.size();
  }
  std::string text;
  for (size_t i = kCertaintyCount; i-- > 0;) {
    if (counts[i] == 0) continue;
    const double share = static_cast<double>(counts[i]) / static_cast<double>(all);
    if (!text.empty()) text += ", ";
    text.append(PercentText(share)).append(" % ").append(kCertainties[i].name);
  }
  return "Of all times of day: " + text + ".";
}

}  // namespace

Section LearntSection(ArbitraryCycleProbabilityTracker& tracker) {
  const std::optional<CycleCells> map =
      MakeCycleCells(ShapeOf(*tracker.GetData()), KnowledgeOfSlots(tracker));
  if (!map) {
    return MakeSection(kLearntId, kLearntTitle, "Only a cycle of whole days has a map.", "");
  }
  std::string rows;
  for (const CycleCells::Row& row : map->rows) rows += MapRow(row, map->cellMinutes);
  std::string legend;
  for (const Certainty& certainty : kCertainties) {
    legend += LegendEntry(certainty.cssClass, certainty.name);
  }
  return MakeSection(
      kLearntId, kLearntTitle,
      "Each bar is " + std::to_string(map->cellMinutes) +
          " minutes: the higher it is, the likelier the machine is in use then, and the fuller it "
          "is, the more often that time was seen.",
      HtmlElement("p", HtmlElement("strong", HtmlText(CertaintyText(*map))) + " " +
                           HtmlText(DayGroupsText(tracker.PooledDays()))) +
          Legend(legend) +
          HtmlElement("table", {{"class", "map"}},
                      HtmlElement("caption", {{"class", "unseen"}},
                                  "Probability of use in per cent, and how often each time was "
                                  "seen, by day and time of day") +
                          MapHead(*map) + HtmlElement("tbody", rows)) +
          Numbers(*map));
}

}  // namespace dozewell::report
