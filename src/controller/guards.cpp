#include "controller/guards.h"

#include <cmath>
#include <cstdint>
#include <string>

#include "base/clock.h"
#include "base/numbers.h"
#include "base/process_flags.h"
#include "controller/engine.h"
#include "diagnostics/debugger.h"
#include "diagnostics/event_writer.h"
#include "power/driver_timer.h"
#include "power/hibernate_after.h"

namespace dozewell {
namespace {

// How far the time asleep may differ from the hibernate-after timeout that ended it.
constexpr double kToleranceSeconds = 60.0;

void TraceAnswer(bool answer) { TraceToDebugger(answer ? L"true\n" : L"false\n"); }

double SecondsSinceSuspend() {
  tm now = kUnsetTime;
  LocalTimeNow(now);
  return std::fabs(static_cast<double>(SecondsBetween(engine.suspendTime, now)));
}

}  // namespace

bool GImpl_GoingToS3(const SMEventData*) {
  TraceToDebugger(L"GImpl_GoingToS3: ");
  TimerRecord timer;
  const bool timerRead = ReadDriverTimer(timer);
  const bool expired = timerRead && (timer.words[kDurationWord] & kTimerExpired) != 0;
  if (DebugLogging) {
    const std::wstring text = L"SleepType 1 bExpired " + std::to_wstring(expired) + L" drvResult " +
                              std::to_wstring(timerRead) + L"\n";
    LogServiceEvent(text.c_str(), 0, kEventInformation);
  }
  uint32_t status = 0;
  const bool statusRead = ReadPreviousSleepStatus(status);
  const bool answer = expired && (!statusRead || status == kSleepEndedByTimer);
  LogServiceEvent(L"GetPreviousSleepStatus %d\n", status, kEventInformation);
  TraceAnswer(answer);
  if (DebugLogging) LogServiceEvent(L"GoingToS3 %d", answer, kEventInformation);
  return answer;
}

bool GImpl_GoingToS4(const SMEventData*) {
  TraceToDebugger(L"GImpl_GoingToS4: ");
  const uint32_t haMinutes = ReadCurrentHA().value_or(0);
  const double haSeconds = haMinutes * 60.0;
  const double duration = haMinutes != 0 ? SecondsSinceSuspend() : 0.0;
  bool answer = haMinutes != 0 && std::fabs(duration - haSeconds) <= kToleranceSeconds;
  uint32_t status = 0;
  if (ReadPreviousSleepStatus(status)) answer = answer && status == kSleepWentOnToHibernation;
  TraceAnswer(answer);
  const std::wstring text = L"SuspendDuration = " +
                            std::to_wstring(Wrap32(TruncateToInt64(duration))) + L" sec, HA = " +
                            std::to_wstring(Wrap32(TruncateToInt64(haSeconds))) + L" sec\n";
  TraceToDebugger(text.c_str());
  if (DebugLogging) {
    LogServiceEvent(L"GetPreviousSleepStatus %d\n", status, kEventInformation);
    LogServiceEvent(L"GoingToS4 %d\n", answer, kEventInformation);
    LogServiceEvent(text.c_str(), 0, kEventInformation);
  }
  return answer;
}

bool GImpl_RealActivate(const SMEventData* event) {
  TraceToDebugger(L"GImpl_RealActivate\n");
  return !GImpl_GoingToS3(event) && !GImpl_GoingToS4(event);
}

}  // namespace dozewell
