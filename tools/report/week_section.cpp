#include "report/week_section.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "common/cycle_cells.h"
#include "common/format_text.h"
#include "common/html.h"
#include "report/figure_text.h"
#include "report/section.h"

namespace dozewell::report {
namespace {

constexpr const char* kId = "week";
constexpr const char* kTitle = "How likely it is in use";
constexpr size_t kCellsPerLabel = 6;

std::string ClockText(int minutes) { return FormatText("%02d:%02d", minutes / 60, minutes % 60); }

// As short as possible, since a phone has little room.
std::string LabelText(int minutes) {
  const std::string text = ClockText(minutes);
  return minutes % 60 == 0 ? text.substr(0, text.find(':')) : text;
}

std::string Cell(const std::string& when, const std::optional<double>& probability) {
  if (!probability) {
    return HtmlElement("td", {{"class", "unknown"}, {"title", when + ": not known"}},
                       HtmlElement("span", {{"class", "unseen"}}, "?"));
  }
  const std::string percent = PercentText(*probability);
  return HtmlElement("td",
                     {{"style", "--likely:" + percent}, {"title", when + ": " + percent + " %"}},
                     HtmlElement("span", {{"class", "unseen"}}, percent));
}

std::string Row(const CycleCells::Row& row, int cellMinutes) {
  std::string cells = HtmlElement("th", {{"scope", "row"}}, HtmlText(row.name));
  int minute = 0;
  for (const auto& probability : row.cells) {
    cells += Cell(row.name + " " + ClockText(minute) + " to " + ClockText(minute + cellMinutes),
                  probability);
    minute += cellMinutes;
  }
  return HtmlElement("tr", cells) + "\n";
}

std::string Head(const CycleCells& map) {
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

}  // namespace

std::string WeekSection(const CycleShape& shape, std::span<const float> probabilities) {
  const std::optional<CycleCells> map = MakeCycleCells(shape, probabilities);
  if (!map) {
    return Section(kId, kTitle, "Only a cycle of whole days has a map.", "");
  }
  std::string rows;
  for (const CycleCells::Row& row : map->rows) rows += Row(row, map->cellMinutes);
  const std::string legend =
      HtmlElement("li", "0 % " + HtmlElement("i", {{"class", "swatch scale"}}, "") + " 100 %") +
      LegendEntry("unknown", "not known yet");
  return Section(
      kId, kTitle,
      "Each cell is " + std::to_string(map->cellMinutes) +
          " minutes of the cycle that has been learnt: the stronger its colour, the likelier the "
          "machine is in use then.",
      HtmlElement("ul", {{"class", "legend"}}, legend) +
          HtmlElement("table", {{"class", "map"}},
                      HtmlElement("caption", {{"class", "unseen"}},
                                  "Probability of use in per cent, by day and time of day") +
                          Head(*map) + HtmlElement("tbody", rows)));
}

}  // namespace dozewell::report
