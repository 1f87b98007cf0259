#include "report/past_section.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "base/wall_clock.h"
#include "common/text.h"

namespace dozewell::report {
namespace {

constexpr const char* kPastId = "past";
constexpr const char* kPastTitle = "The recorded past";
constexpr int64_t kMostDays = 60;

constexpr StretchKind kPastKinds[] = {{"use", "in use"},
                                      {"asleep", "asleep"},
                                      {"hibernated", "hibernated"},
                                      {"woken", "woken by its timer, asleep and ready"},
                                      {"none", "no record"}};

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

Section PastSection(const SimTimeLine& timeLine) {
  const std::vector<Stretch> stretches = PastStretches(timeLine);
  if (stretches.empty()) {
    return MakeSection(kPastId, kPastTitle, "The history is too short to replay.", "");
  }
  const int64_t firstDay = stretches.front().start / kSecondsPerDay;
  const int64_t lastDay = (stretches.back().end - 1) / kSecondsPerDay;
  const int64_t allDays = lastDay - firstDay + 1;
  const int64_t shown = std::min(allDays, kMostDays);
  const Days days = {kPastKinds, stretches, (lastDay - shown + 1) * kSecondsPerDay,
                     static_cast<int>(shown)};
  const std::string which = shown < allDays ? "the last " + std::to_string(shown) + " of " +
                                                  std::to_string(allDays) + " days"
                                            : "all of " + CountText(allDays, "day", "days");
  return MakeSection(
      kPastId, kPastTitle,
      "When it was in use is recorded; when it slept, hibernated and was woken is "
      "simulated with these settings, beginning with nothing learnt. Shown: " +
          which + ".",
      DayStrips("What the machine did on each day", days) +
          Fold("The times of these days", DayTimes("When the machine did what", days)));
}

}  // namespace dozewell::report
