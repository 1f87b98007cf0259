#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "base/clock.h"
#include "common/duration_text.h"
#include "common/option_text.h"
#include "common/text.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_identity.h"
#include "ctl/require_done.h"
#include "ctl/service_calls.h"
#include "ctl/time_argument.h"
#include "ctl/wake_time_text.h"
#include "ctl/windows_timer.h"
#include "power/driver_timer.h"

namespace dozewell::ctl {
namespace {

constexpr uint32_t kTimers = 2;

constexpr const char* kTimerNotRead =
    "the timer could not be read: the service has no driver device, or the driver does not answer";
constexpr const char* kNotArmed =
    "the timer was not armed: the service has no driver device, or the driver did not take it";

// What a timer holds, in both of its meanings.
struct TimerReading {
  uint32_t timer;
  WakeTime time;
  int32_t count;
};

uint32_t ParseTimer(const std::string& text) {
  const auto timer = ParseNumber<uint32_t>(text);
  if (timer && *timer < kTimers) return *timer;
  throw CommandFailure(ExitCode::Usage, WrongValue("TIMER", "0 or 1", text));
}

int32_t ParseCount(const std::string& text) {
  const auto minutes = ParseDuration(text);
  if (minutes && *minutes <= kTimerDurationMinutes) return static_cast<int32_t>(*minutes);
  throw CommandFailure(ExitCode::Usage, WrongValue("DURATION",
                                                   "0 to " + std::to_string(kTimerDurationMinutes) +
                                                       " minutes, such as 45m or 1h30m",
                                                   text));
}

WakeTime WakeTimeOf(const tm& given, const std::string& text) {
  if (given.tm_sec != 0) {
    throw CommandFailure(ExitCode::Usage, WrongValue("TIME", "in whole minutes", text));
  }
  if (const auto time = ToWakeTime(given)) return *time;
  throw CommandFailure(
      ExitCode::Usage,
      WrongValue("TIME", std::string("a local time from ") + kWakeTimeRange, text));
}

TimerReading ReadTimer(uint32_t timer) {
  TimerReading reading = {timer, {}, 0};
  RequireDone(CallGetWakeTime(timer, reading.time), kTimerNotRead);
  RequireDone(CallGetWakeRaw(timer, reading.count), kTimerNotRead);
  return reading;
}

std::string TimerName(uint32_t timer) { return "Timer " + std::to_string(timer); }

std::string ReadingText(const TimerReading& reading) {
  return TimerName(reading.timer) + " as a time: " + WakeTimeText(reading.time) +
         "; as a duration: " + DurationText(reading.count) + "\n";
}

Json TimerJson(const TimerReading& reading) {
  Json json = {{"timer", reading.timer}, {"time", OptionalJson(CalendarText(reading.time))}};
  json.update(WakeTimeJson(reading.time));
  json["durationMinutes"] = reading.count;
  return json;
}

void ShowCount(uint32_t timer, int32_t count, const Options& options, const Console& console) {
  console.print(options.json ? LiveLine({{"timer", timer}, {"durationMinutes", count}})
                             : TimerName(timer) + ": " + DurationText(count) + "\n");
}

// Windows' timer, in the driver's place, keeps what else the timers hold and wakes for none of it.
bool WakesNothing(uint32_t timer, bool isDuration) {
  const bool wakes = timer == kDurationWord && isDuration;
  return !wakes && ReadWindowsTimer() != WindowsTimer::Unused;
}

const char* HoldsOrIsArmed(bool wakesNothing) {
  return wakesNothing ? " holds " : " is armed for ";
}

void WarnThatItWakesNothing(const Console& console) {
  console.warn(
      "warning: it wakes nothing: Windows' timer, which is in the driver's place, knows "
      "only durations, and only in timer 1");
}

}  // namespace

void RunWakeGet(const Options& options, const Console& console) {
  std::vector<TimerReading> readings;
  if (options.timer) {
    readings.push_back(ReadTimer(ParseTimer(*options.timer)));
  } else {
    for (uint32_t timer = 0; timer < kTimers; ++timer) readings.push_back(ReadTimer(timer));
  }
  if (options.json) {
    Json list = Json::array();
    for (const TimerReading& reading : readings) list.push_back(TimerJson(reading));
    console.print(LiveLine(list));
    return;
  }
  for (const TimerReading& reading : readings) console.print(ReadingText(reading));
}

void RunWakeSet(const Options& options, const Console& console) {
  const uint32_t timer = ParseTimer(options.timer.value());
  const tm given = ParseTimeArgument("TIME", options.time.value());
  const WakeTime time = WakeTimeOf(given, *options.time);
  RequireDone(CallSetWakeTime(timer, time), kNotArmed);
  const bool wakesNothing = WakesNothing(timer, /*isDuration=*/false);
  const std::string text = WakeTimeText(time);
  tm now;
  if (LocalTimeNow(now) && SecondsFromTm(given) <= SecondsFromTm(now)) {
    console.warn("warning: " + text + " has passed");
  }
  if (options.json) {
    Json json = {{"timer", timer}, {"time", text}};
    json.update(WakeTimeJson(time));
    console.print(LiveLine(json));
  } else {
    console.print(TimerName(timer) + HoldsOrIsArmed(wakesNothing) + text + ".\n");
  }
  if (wakesNothing) WarnThatItWakesNothing(console);
}

void RunWakeRaw(const Options& options, const Console& console) {
  const uint32_t timer = ParseTimer(options.timer.value());
  int32_t count = 0;
  if (!options.duration) {
    RequireDone(CallGetWakeRaw(timer, count), kTimerNotRead);
    ShowCount(timer, count, options, console);
    return;
  }
  count = ParseCount(*options.duration);
  RequireDone(CallSetWakeRaw(timer, count), kNotArmed);
  const bool wakesNothing = WakesNothing(timer, /*isDuration=*/true);
  if (options.json) {
    ShowCount(timer, count, options, console);
  } else {
    console.print(TimerName(timer) + HoldsOrIsArmed(wakesNothing) + DurationText(count) +
                  " from now.\n");
  }
  if (wakesNothing) WarnThatItWakesNothing(console);
}

}  // namespace dozewell::ctl
