#include "report/day_strips.h"

#include <algorithm>
#include <vector>

#include "base/wall_clock.h"
#include "common/hours_text.h"
#include "common/html.h"
#include "report/figure_text.h"
#include "report/section.h"

namespace dozewell::report {
namespace {

constexpr int kMonday = 1;

// The day that begins at `midnight`, from its first to its last second: the parts of stretches that
// lie in it, and what is between them.
std::vector<Stretch> PartsOfDay(const Days& days, int64_t midnight) {
  const size_t between = days.kinds.size() - 1;
  const int64_t dayEnd = midnight + kSecondsPerDay;
  std::vector<Stretch> parts;
  int64_t reached = midnight;
  for (const Stretch& stretch : days.stretches) {
    const int64_t start = std::max(stretch.start, midnight);
    const int64_t end = std::min(stretch.end, dayEnd);
    if (start >= end) continue;
    if (reached < start) parts.push_back({reached, start, between});
    parts.push_back({start, end, stretch.kind});
    reached = end;
  }
  if (reached < dayEnd) parts.push_back({reached, dayEnd, between});
  return parts;
}

// "08:05 to 12:10". The end of a day is written as 24:00.
std::string PartText(const Stretch& part, int64_t midnight) {
  const bool atEnd = part.end == midnight + kSecondsPerDay;
  return TimeText(TimeOf(part.start)) + " to " + (atEnd ? "24:00" : TimeText(TimeOf(part.end)));
}

// "in use 6.0 hours, asleep 18.0 hours"
std::string HoursOfKinds(const Days& days, const std::vector<Stretch>& parts) {
  std::string summary;
  for (size_t kind = 0; kind < days.kinds.size(); ++kind) {
    int64_t seconds = 0;
    for (const Stretch& part : parts) {
      if (part.kind == kind) seconds += part.end - part.start;
    }
    if (seconds == 0) continue;
    if (!summary.empty()) summary += ", ";
    summary.append(days.kinds[kind].name).append(" ").append(HoursText(seconds)).append(" hours");
  }
  return summary;
}

// "in use 08:05 to 12:10, 13:00 to 17:00; asleep 12:10 to 13:00"
std::string TimesOfKinds(const Days& days, const std::vector<Stretch>& parts, int64_t midnight) {
  std::string text;
  for (size_t kind = 0; kind < days.kinds.size(); ++kind) {
    std::string times;
    for (const Stretch& part : parts) {
      if (part.kind == kind) times += (times.empty() ? " " : ", ") + PartText(part, midnight);
    }
    if (times.empty()) continue;
    if (!text.empty()) text += "; ";
    text += days.kinds[kind].name + times;
  }
  return text;
}

std::string Bar(const StretchKind& kind, const Stretch& part, int64_t midnight) {
  const std::string place = "left:" + CssPercent(part.start - midnight, kSecondsPerDay) +
                            ";width:" + CssPercent(part.end - part.start, kSecondsPerDay);
  const std::string title = std::string(kind.name) + ", " + PartText(part, midnight);
  return HtmlElement("i", {{"class", kind.cssClass}, {"style", place}, {"title", title}}, "");
}

std::string StripRow(const Days& days, int64_t midnight) {
  const std::vector<Stretch> parts = PartsOfDay(days, midnight);
  std::string bars;
  for (const Stretch& part : parts) bars += Bar(days.kinds[part.kind], part, midnight);
  const std::string summary = HoursOfKinds(days, parts);
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

std::string DayStrips(std::string_view caption, const Days& days) {
  std::string legend;
  for (const StretchKind& kind : days.kinds) legend += LegendEntry(kind.cssClass, kind.name);
  const std::string head = HtmlElement(
      "tr", HtmlElement("th", {{"scope", "col"}}, "Day") +
                HtmlElement("th", {{"scope", "col"}},
                            HtmlElement("span", {{"class", "unseen"}}, "Hours") + HourAxis()));
  std::string rows;
  for (int day = 0; day < days.count; ++day) {
    rows += StripRow(days, days.first + day * kSecondsPerDay);
  }
  return Legend(legend) +
         HtmlElement("table", {{"class", "days"}},
                     HtmlElement("caption", {{"class", "unseen"}}, HtmlText(caption)) +
                         HtmlElement("thead", head) + HtmlElement("tbody", rows));
}

std::string DayTimes(std::string_view caption, const Days& days) {
  std::string rows;
  for (int day = 0; day < days.count; ++day) {
    const int64_t midnight = days.first + day * kSecondsPerDay;
    rows += ListRow(DateText(TimeOf(midnight)),
                    TimesOfKinds(days, PartsOfDay(days, midnight), midnight));
  }
  return ListTable(caption, "Day", "Times", rows);
}

}  // namespace dozewell::report
