#include "prediction/suspend_decision.h"

#include "base/numbers.h"

namespace dozewell {
namespace {

constexpr const wchar_t* kNoPredictionText = L"no prediction";
constexpr const wchar_t* kNeverText = L"never";

std::wstring TextMinutesLater(tm time, int32_t minutes) {
  AddSecondsToTime(&time, Wrap32(int64_t{minutes} * 60));
  return WallClockText(time);
}

}  // namespace

SuspendDecision DecideSuspend(const std::vector<PredictionRecord>& predictions, const tm& now) {
  SuspendDecision decision = {kNoPredictionText, kNeverText, kNoPredictionText, {}, {}, {}, {}};
  if (!predictions.empty() && predictions[0].minutes != kNoPrediction) {
    const PredictionRecord& first = predictions[0];
    decision.hibernateAt = TextMinutesLater(first.time, first.minutes);
    decision.haMinutes = Wrap32(int64_t{MinutesBetween(now, first.time)} + first.minutes);
  }
  if (predictions.size() >= 2 && SecondsBetween(now, predictions[1].time) > 0) {
    const PredictionRecord& second = predictions[1];
    decision.nextSleepTime = second.time;
    decision.sleepRestoredAt = WallClockText(second.time);
    decision.timerMinutes = MinutesBetween(now, second.time);
    if (second.minutes != kNoPrediction) {
      decision.nextHAMinutes = second.minutes;
      decision.hibernateNextAt = TextMinutesLater(second.time, second.minutes);
    }
  }
  return decision;
}

}  // namespace dozewell
