#include "report/outlook_section.h"

#include <algorithm>
#include <vector>

#include "common/duration_text.h"
#include "common/html.h"
#include "report/day_strips.h"
#include "report/figure_text.h"
#include "report/outlook.h"
#include "report/section.h"

namespace dozewell::report {
namespace {

constexpr int kDaysAhead = 7;
constexpr size_t kListed = 6;

constexpr StretchKind kPredictedKinds[] = {{"use", "in use, or asleep and ready"},
                                           {"hibernated", "idle, hibernated"}};
constexpr size_t kReady = 0;
constexpr size_t kIdle = 1;

// Ready until each idle stretch, idle until each next use.
std::vector<Stretch> Stretches(const std::vector<PredictedIdleness>& predicted, int64_t now,
                               int64_t end) {
  std::vector<Stretch> stretches;
  int64_t ready = now;
  for (const PredictedIdleness& idleness : predicted) {
    stretches.push_back({ready, idleness.start, kReady});
    const int64_t use = idleness.use.value_or(end);
    stretches.push_back({idleness.start, use, kIdle});
    ready = use;
  }
  if (!predicted.empty() && ready < end) stretches.push_back({ready, end, kReady});
  return stretches;
}

std::string ListRow(const PredictedIdleness& idleness) {
  const auto cell = [](const std::string& text) { return HtmlElement("td", HtmlText(text)); };
  const std::string from = cell(DateTimeText(TimeOf(idleness.start)));
  if (!idleness.use) return HtmlElement("tr", from + cell("not known") + cell("-"));
  return HtmlElement("tr", from + cell(DateTimeText(TimeOf(*idleness.use))) +
                               cell(DurationText((*idleness.use - idleness.start) / 60)));
}

std::string List(const std::vector<PredictedIdleness>& predicted) {
  std::string head;
  for (const char* const title : {"Idle from", "In use again", "Idle for"}) {
    head += HtmlElement("th", {{"scope", "col"}}, title);
  }
  std::string rows;
  const size_t listed = std::min(predicted.size(), kListed);
  for (size_t i = 0; i < listed; ++i) rows += ListRow(predicted[i]);
  return HtmlElement("table", {{"class", "list"}},
                     HtmlElement("caption", "The next idle stretches") +
                         HtmlElement("thead", HtmlElement("tr", head)) +
                         HtmlElement("tbody", rows));
}

}  // namespace

std::string OutlookSection(ArbitraryCycleProbabilityTracker& tracker, const tm& now) {
  const int64_t seconds = SecondsFromTm(now);
  const int64_t firstDay = seconds - seconds % kSecondsPerDay;
  const int64_t end = std::min(firstDay + kDaysAhead * kSecondsPerDay, kLastSecond + 1);
  const auto predicted = PredictIdleness(tracker, now, end);
  const std::string figure = predicted.empty()
                                 ? Paragraph("Nothing is predicted; the evidence above says why.")
                                 : DayStrips("What is predicted for each day", kPredictedKinds,
                                             Stretches(predicted, seconds, end), firstDay,
                                             static_cast<int>((end - firstDay) / kSecondsPerDay)) +
                                       List(predicted);
  return Section("outlook", "The next days",
                 "When the machine, left alone, is expected to lie idle and when to be needed, by "
                 "the predictions that follow one another from now on.",
                 figure);
}

}  // namespace dozewell::report
