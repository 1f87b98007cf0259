#include "report/past_section.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "base/wall_clock.h"
#include "report/section.h"

namespace dozewell::report {
namespace {

constexpr int64_t kMostDays = 60;

constexpr StretchKind kPastKinds[] = {{"use", "in use"},
                                      {"asleep", "asleep"},
                                      {"hibernated", "hibernated"},
                                      {"woken", "woken by the timer, asleep and ready"}};

// Nothing for limbo, to which no history that the service writes leads.
std::optional<size_t> KindOf(SimState state) {
  switch (state) {
    case SimState::Active:
      return 0;
    case SimState::Asleep:
      return 1;
    case SimState::Hibernating:
    case SimState::PredictedHibernation:
      return 2;
    case SimState::PredictedWakeBack:
      return 3;
    case SimState::Limbo:
      break;
  }
  return std::nullopt;
}

}  // namespace

std::vector<Stretch> PastStretches(const SimTimeLine& timeLine) {
  const auto inCalendar = [](int64_t time) { return std::clamp(time, int64_t{0}, kLastSecond); };
  std::vector<Stretch> stretches;
  for (size_t i = 1; i < timeLine.size(); ++i) {
    const auto kind = KindOf(timeLine[i - 1].state);
    const Stretch stretch = {inCalendar(timeLine[i - 1].time), inCalendar(timeLine[i].time),
                             kind.value_or(0)};
    if (kind && stretch.start < stretch.end) stretches.push_back(stretch);
  }
  return stretches;
}

std::string PastSection(const SimTimeLine& timeLine) {
  const std::vector<Stretch> stretches = PastStretches(timeLine);
  std::string figure = Paragraph("The history is too short to replay.");
  if (!stretches.empty()) {
    const int64_t firstDay = stretches.front().start / kSecondsPerDay;
    const int64_t lastDay = (stretches.back().end - 1) / kSecondsPerDay;
    const int64_t days = std::min(lastDay - firstDay + 1, kMostDays);
    figure = DayStrips("What the machine did on each day", kPastKinds, stretches,
                       (lastDay - days + 1) * kSecondsPerDay, static_cast<int>(days));
  }
  return Section("past", "The recorded past",
                 "When it was in use is recorded; when it slept, hibernated and was woken is "
                 "simulated with these settings, over at most the last " +
                     std::to_string(kMostDays) + " days.",
                 figure);
}

}  // namespace dozewell::report
