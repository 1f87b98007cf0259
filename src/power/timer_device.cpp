#include "power/timer_device.h"

#include <algorithm>
#include <cstring>
#include <mutex>

#include "base/clock.h"
#include "base/wall_clock.h"
#include "power/last_sleep.h"
#include "power/wake_timer.h"
#include "power/wake_timers_allowed.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

// How long after the due time a wake is still the timer's, if the machine slept until then.
constexpr int64_t kLatestWakeSeconds = 120;

// By how much a wake may seem to come before the timer that caused it: clocks are read in whole
// seconds, and the wall clock is set anew at each resume.
constexpr int64_t kClockErrorSeconds = 2;

bool HasSizes(size_t inputSize, size_t expectedInput, size_t outputSize, size_t expectedOutput) {
  return inputSize == expectedInput && outputSize == expectedOutput;
}

// When something happened, in seconds since 1970, given by the clock of a LastSleep.
int64_t UtcSecondsOf(uint64_t time, const LastSleep& sleep, int64_t now) {
  constexpr int64_t kMillisecondsPerSecond = 1000;
  return now - static_cast<int64_t>(sleep.now - time) / kMillisecondsPerSecond;
}

// The machine slept at the due time and woke right after it.
bool EndedSleep(int64_t due, const LastSleep& sleep, int64_t now) {
  const int64_t woke = UtcSecondsOf(sleep.woke, sleep, now);
  return UtcSecondsOf(sleep.fellAsleep, sleep, now) < due && woke >= due - kClockErrorSeconds &&
         woke <= due + kLatestWakeSeconds;
}

}  // namespace

bool TimerDevice::Open() {
  const std::lock_guard guard(lock_);
  timer_ = CreateWakeTimer();
  if (timer_ == nullptr) return false;
  record_ = {};
  due_.reset();
  expiry_.reset();
  wakes_ = true;
  WriteSetting(kWindowsTimerStateName, kWindowsTimerWakes);
  return true;
}

bool TimerDevice::PerformControl(uint32_t code, const void* input, size_t inputSize, void* output,
                                 size_t outputSize) {
  const std::lock_guard guard(lock_);
  if (timer_ == nullptr) return false;
  TimerRecord record;
  if (code == kWriteTimerControl && HasSizes(inputSize, sizeof(record), outputSize, 0)) {
    std::memcpy(&record, input, sizeof(record));
    return Write(record);
  }
  if (code == kReadTimerControl && HasSizes(inputSize, 0, outputSize, sizeof(record))) {
    record = Read();
    std::memcpy(output, &record, sizeof(record));
    return true;
  }
  // That leaves kReadPreviousSleepStatusControl: nothing tells sleep from hibernation, and a guess
  // would be worse than no answer.
  return false;
}

void TimerDevice::CancelTimer() {
  const std::lock_guard guard(lock_);
  Disarm();
}

bool TimerDevice::CanWake() {
  const std::lock_guard guard(lock_);
  return timer_ != nullptr && wakes_;
}

void TimerDevice::Close() {
  const std::lock_guard guard(lock_);
  if (timer_ == nullptr) return;
  Disarm();
  CloseWakeTimer(timer_);
  timer_ = nullptr;
  uint32_t state = 0;
  ReadSetting(kWindowsTimerStateName, state, /*deleteAfterRead=*/true);
}

TimerRecord TimerDevice::Read() {
  const int64_t now = UtcSecondsNow();
  if (due_ && now >= *due_) Fire(now);
  TimerRecord record = record_;
  uint32_t& word = record.words[kDurationWord];
  word &= ~kTimerExpired;
  if (due_) {
    // Rounded up, so that a client that writes back what it has read shifts the wake by less than a
    // minute.
    const int64_t minutes = (*due_ - now + kSecondsPerMinute - 1) / kSecondsPerMinute;
    const auto shown = std::min<int64_t>(minutes, kTimerDurationMinutes);
    word = (word & ~kTimerPayload) | TimerDurationPayload(static_cast<uint32_t>(shown));
  } else if ((word & kTimerDurationForm) != 0) {
    word &= ~kTimerDurationMinutes;
  }
  if (IsExpired()) word |= kTimerExpired;
  return record;
}

bool TimerDevice::Write(const TimerRecord& record) {
  const uint32_t word = record.words[kDurationWord];
  const bool isDuration = (word & kTimerDurationForm) != 0;
  const uint32_t minutes = isDuration ? word & kTimerDurationMinutes : 0;
  if ((word & kTimerEnabled) == 0) {
    Disarm();
  } else if (record.words[kAlarmWord] == record_.words[kAlarmWord]) {
    if (minutes == 0) {
      Disarm();
    } else if (!Arm(minutes)) {
      return false;
    }
  }
  record_ = record;
  return true;
}

bool TimerDevice::Arm(uint32_t minutes) {
  const int64_t now = UtcSecondsNow();
  if (now < 0) return false;
  const int64_t due = now + minutes * kSecondsPerMinute;
  expiry_.reset();
  const WakeTimerArming arming = ArmWakeTimer(timer_, due);
  if (arming == WakeTimerArming::kArmed) {
    due_ = due;
    NoteWhetherItWakes(true);
    return true;
  }
  // It may still be armed, for this time or an earlier arming's.
  CancelWakeTimer(timer_);
  due_.reset();
  if (arming == WakeTimerArming::kCannotWake) NoteWhetherItWakes(false);
  return false;
}

void TimerDevice::Disarm() {
  if (due_) CancelWakeTimer(timer_);
  due_.reset();
  expiry_.reset();
}

// A sleep that ended long after the due time was ended by somebody else, and so was one that began
// after it, or one that no timer may end: taken for the timer's, it would put the machine back to
// sleep under its user's hands. A machine that is left awake falls asleep by itself when nobody
// touches it.
void TimerDevice::Fire(int64_t now) {
  const int64_t due = *due_;
  due_.reset();
  if (!AreWakeTimersAllowed()) return;
  const auto sleep = ReadLastSleep();
  if (!sleep) {
    if (now <= due + kLatestWakeSeconds) expiry_ = Expiry{std::nullopt};
  } else if (EndedSleep(due, *sleep, now)) {
    expiry_ = Expiry{sleep->woke};
  }
}

bool TimerDevice::IsExpired() {
  if (!expiry_) return false;
  // Nobody can say whether the next question is about the same resume.
  if (!expiry_->wake) {
    expiry_.reset();
    return true;
  }
  const auto sleep = ReadLastSleep();
  if (!sleep || sleep->woke != *expiry_->wake) expiry_.reset();
  return expiry_.has_value();
}

void TimerDevice::NoteWhetherItWakes(bool wakes) {
  if (wakes == wakes_) return;
  wakes_ = wakes;
  WriteSetting(kWindowsTimerStateName, wakes ? kWindowsTimerWakes : kWindowsTimerCannotWake);
}

}  // namespace dozewell
