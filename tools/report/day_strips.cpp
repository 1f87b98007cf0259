#include "report/day_strips.h"

#include <algorithm>
#include <vector>

#include "common/hours_text.h"
#include "common/html.h"
#include "report/figure_text.h"
#include "report/section.h"

namespace dozewell::report {
namespace {

constexpr int kMonday = 1;

// The parts of stretches that lie in the day that begins at `midnight`.
std::vector<Stretch> CutToDay(std::span<const Stretch> stretches, int64_t midnight) {
  std::vector<Stretch> parts;
  for (const Stretch& stretch : stretches) {
    const int64_t start = std::max(stretch.start, midnight);
    const int64_t end = std::min(stretch.end, midnight + kSecondsPerDay);
    if (start < end) parts.push_back({start, end, stretch.kind});
  }
  return parts;
}

// The end of a day is written as 24:00.
std::string EndText(int64_t end, int64_t midnight) {
  return end == midnight + kSecondsPerDay ? "24:00" : TimeText(TimeOf(end));
}

std::string Summary(std::span<const StretchKind> kinds, const std::vector<Stretch>& parts) {
  std::string summary;
  for (size_t kind = 0; kind < kinds.size(); ++kind) {
    int64_t seconds = 0;
    for (const Stretch& part : parts) {
      if (part.kind == kind) seconds += part.end - part.start;
    }
    if (seconds == 0) continue;
    if (!summary.empty()) summary += ", ";
    summary.append(kinds[kind].name).append(" ").append(HoursText(seconds)).append(" hours");
  }
  return summary.empty() ? "nothing known" : summary;
}

std::string Bar(const StretchKind& kind, const Stretch& part, int64_t midnight) {
  const std::string place = "left:" + CssPercent(part.start - midnight, kSecondsPerDay) +
                            ";width:" + CssPercent(part.end - part.start, kSecondsPerDay);
  const std::string title = std::string(kind.name) + ", " + TimeText(TimeOf(part.start)) + " to " +
                            EndText(part.end, midnight);
  return HtmlElement("i", {{"class", kind.cssClass}, {"style", place}, {"title", title}}, "");
}

std::string DayRow(std::span<const StretchKind> kinds, const std::vector<Stretch>& parts,
                   int64_t midnight) {
  std::string bars;
  for (const Stretch& part : parts) bars += Bar(kinds[part.kind], part, midnight);
  const std::string summary = Summary(kinds, parts);
  const tm date = TimeOf(midnight);
  return HtmlElement(
             "tr", {{"class", date.tm_wday == kMonday ? "monday" : "day"}},
             HtmlElement("th", {{"scope", "row"}}, HtmlText(DateText(date))) +
                 HtmlElement(
                     "td",
                     HtmlElement("div",
                                 {{"class", "strip"}, {"role", "img"}, {"aria-label", summary}},
                                 bars))) +
         "\n";
}

}  // namespace

std::string DayStrips(std::string_view caption, std::span<const StretchKind> kinds,
                      std::span<const Stretch> stretches, int64_t firstDay, int days) {
  std::string legend;
  for (const StretchKind& kind : kinds) legend += LegendEntry(kind.cssClass, kind.name);
  const std::string head = HtmlElement(
      "tr", HtmlElement("th", {{"scope", "col"}}, "Day") +
                HtmlElement("th", {{"scope", "col"}},
                            HtmlElement("span", {{"class", "unseen"}}, "Hours") + HourAxis()));
  std::string rows;
  for (int day = 0; day < days; ++day) {
    const int64_t midnight = firstDay + day * kSecondsPerDay;
    rows += DayRow(kinds, CutToDay(stretches, midnight), midnight);
  }
  return HtmlElement("ul", {{"class", "legend"}}, legend) +
         HtmlElement("table", {{"class", "days"}},
                     HtmlElement("caption", {{"class", "unseen"}}, HtmlText(caption)) +
                         HtmlElement("thead", head) + HtmlElement("tbody", rows));
}

}  // namespace dozewell::report
