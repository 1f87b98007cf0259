#include "report/outlook_figure.h"

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

constexpr StretchKind kPredictedKinds[] = {{"asleep", "ready, since use is likely"},
                                           {"hibernated", "hibernated, since it is not"},
                                           {"none", "past, or not predicted"}};
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

std::string IdleRow(const PredictedIdleness& idleness) {
  const std::string from = DateTimeText(TimeOf(idleness.start));
  if (!idleness.use) return ListRow(from, "use is not known");
  return ListRow(from, DateTimeText(TimeOf(*idleness.use)) + ", after " +
                           DurationText((*idleness.use - idleness.start) / 60));
}

// None is left out, so the number says how many there are.
std::string IdleTable(const std::vector<PredictedIdleness>& predicted) {
  std::string rows;
  for (const PredictedIdleness& idleness : predicted) rows += IdleRow(idleness);
  const std::string all = predicted.size() == 1
                              ? "The only idle stretch"
                              : "All " + std::to_string(predicted.size()) + " idle stretches";
  return Fold(
      all + " of these days, in words",
      ListTable(all + " from now to the end of these days", "Idle from", "In use again", rows));
}

}  // namespace

std::string OutlookFigure(ArbitraryCycleProbabilityTracker& tracker, const tm& now) {
  const int64_t seconds = SecondsFromTm(now);
  const int64_t firstDay = seconds - seconds % kSecondsPerDay;
  const int64_t end = std::min(firstDay + kDaysAhead * kSecondsPerDay, kLastSecond + 1);
  const auto predicted = PredictIdleness(tracker, now, end);
  if (predicted.empty()) {
    return Paragraph("Nothing is predicted for the days after it either.");
  }
  const std::vector<Stretch> stretches = Stretches(predicted, seconds, end);
  const Days days = {kPredictedKinds, stretches, firstDay,
                     static_cast<int>((end - firstDay) / kSecondsPerDay)};
  return HtmlElement("h3", "Left alone, on these days") +
         DayStrips("What is predicted for each day", days) + IdleTable(predicted);
}

}  // namespace dozewell::report
