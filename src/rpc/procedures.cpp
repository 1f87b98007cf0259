#include "rpc/procedures.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <mutex>
#include <string>

#include "base/lock.h"
#include "base/numbers.h"
#include "base/process_flags.h"
#include "controller/controller.h"
#include "controller/state_machine/state_machine.h"
#include "power/driver_timer.h"
#include "power/power_scheme.h"
#include "settings/predictor_values.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace {

// The largest number that a well-behaved client's enumeration can hold.
constexpr uint32_t kLargestEnum = 0x7FFF;

// In the order of their numbers on the wire.
constexpr Guid kSchemes[] = {
    {0x381B4222, 0xF694, 0x41F0, {0x96, 0x85, 0xFF, 0x5B, 0xB2, 0x60, 0xDF, 0x2E}},
    {0xA1841308, 0x3541, 0x4FAB, {0xBC, 0x81, 0xF7, 0x15, 0x56, 0xF2, 0x0B, 0x4A}},
    {0x8C5E7FDA, 0xE8BF, 0x4A96, {0x9A, 0x85, 0xA6, 0xE2, 0x3A, 0x8C, 0x63, 0x5C}},
};

// The fields of a packed time, from its lowest bit.
struct Field {
  int32_t WakeTime::*field;
  uint32_t shift;
  uint32_t mask;
};
constexpr Field kFields[] = {
    {&WakeTime::minute, 0, 0x3F}, {&WakeTime::hour, 6, 0x1F},  {&WakeTime::day, 11, 0x1F},
    {&WakeTime::month, 16, 0x0F}, {&WakeTime::year, 20, 0x7F},
};

uint32_t Pack(const WakeTime& time) {
  uint32_t packed = 0;
  for (const Field& field : kFields) {
    packed |= (static_cast<uint32_t>(time.*field.field) & field.mask) << field.shift;
  }
  return packed;
}

WakeTime Unpack(uint32_t packed) {
  WakeTime time = {};
  for (const Field& field : kFields) {
    time.*field.field = static_cast<int32_t>(packed >> field.shift & field.mask);
  }
  return time;
}

bool Arm(uint32_t timer, uint32_t payload) {
  switch (timer) {
    case kAlarmWord:
      return DriverFuncCall.ArmDriverTimerAlarm(payload);
    case kDurationWord:
      return DriverFuncCall.ArmDriverTimerDuration(payload);
    default:
      return false;
  }
}

bool ReadPayload(uint32_t timer, uint32_t& payload) {
  TimerRecord record;
  if (timer >= record.words.size() || !ReadDriverTimer(record)) return false;
  payload = record.words.at(timer) & kTimerPayload;
  return true;
}

bool SetTimersEnabled(bool enable) {
  TimerRecord record;
  if (!ReadDriverTimer(record)) return false;
  for (uint32_t& word : record.words) {
    word = (word & ~kTimerEnabled) | (enable ? kTimerEnabled : 0);
  }
  return WriteDriverTimer(record);
}

bool CanSelect(uint32_t mask, uint32_t source) {
  return mask != 0 && mask <= kLargestEnum && source <= kLargestEnum;
}

// Lets one client at a time reach the controller, so that a suspend never waits for more than one.
// Never destroyed, like all locks.
Lock& ClientLock = *new Lock;

template <typename Event, typename... Arguments>
void PostForClient(Arguments&&... arguments) {
  const std::lock_guard guard(ClientLock);
  PostDroppingExceptions<Event>(std::forward<Arguments>(arguments)...);
}

bool Start() {
  const std::lock_guard guard(ClientLock);
  try {
    StartController();
    return true;
  } catch (...) {
    return false;
  }
}

void Stop() {
  const std::lock_guard guard(ClientLock);
  StopController();
}

// Lets the start gate start the controller from now on.
void OpenStartGate() {
  const uint32_t current = SettingOr(kCurrentAttemptName, kClientSwitchCurrentAttempt);
  const uint32_t total = SettingOr(kTotalAttemptsName, kClientSwitchTotalAttempts);
  if (current < total) WriteSetting(kCurrentAttemptName, total);
}

}  // namespace

bool Ping() { return true; }

bool GetDriverEnabled(bool* enabled) {
  TimerRecord record;
  if (enabled == nullptr || !ReadDriverTimer(record)) return false;
  *enabled =
      std::ranges::any_of(record.words, [](uint32_t word) { return (word & kTimerEnabled) != 0; });
  return true;
}

bool SetFeatureEnabled(bool enable) {
  bool done = true;
  if (enable) {
    done = Start();
    OpenStartGate();
  } else {
    Stop();
  }
  // Otherwise the next resume would undo what the client chose.
  FeatureEnabled = enable;
  WriteSetting(kEnableZ7FeatureName, enable ? 1 : 0);
  return SetTimersEnabled(enable) && done;
}

bool GetFeatureEnabled(bool* enabled) {
  uint32_t value = 0;
  if (enabled == nullptr || !ReadSetting(kEnableZ7FeatureName, value, /*deleteAfterRead=*/false)) {
    return false;
  }
  *enabled = value == 1;
  return true;
}

bool SetWakeTime(uint32_t timer, const WakeTime* wakeTime) {
  return wakeTime != nullptr && Arm(timer, Pack(*wakeTime));
}

bool SetWakeRaw(uint32_t timer, int32_t count) {
  return Arm(timer, TimerDurationPayload(static_cast<uint32_t>(count)));
}

bool GetWakeTime(uint32_t timer, WakeTime* wakeTime) {
  uint32_t payload = 0;
  if (wakeTime == nullptr || !ReadPayload(timer, payload)) return false;
  *wakeTime = Unpack(payload);
  return true;
}

bool GetWakeRaw(uint32_t timer, int32_t* count) {
  uint32_t payload = 0;
  if (count == nullptr || !ReadPayload(timer, payload)) return false;
  *count = static_cast<int32_t>(payload & kTimerDurationMinutes);
  return true;
}

bool GetPowerSettings(uint32_t mask, uint32_t source, PowerTimeouts* settings) {
  Guid scheme = {};
  PowerTimeouts read = {};
  if (settings == nullptr || !CanSelect(mask, source) || !GetActivePowerScheme(scheme) ||
      ReadPowerTimeouts(mask, source, scheme, &read) != mask) {
    return false;
  }
  *settings = read;
  return true;
}

bool SetPowerSettings(uint32_t mask, uint32_t source, const PowerTimeouts* settings) {
  Guid scheme = {};
  return settings != nullptr && CanSelect(mask, source) && GetActivePowerScheme(scheme) &&
         WritePowerTimeouts(mask, source, scheme, settings) == mask;
}

bool GetActiveScheme(uint32_t* scheme) {
  Guid active = {};
  if (scheme == nullptr || !GetActivePowerScheme(active)) return false;
  const Guid* const found = std::ranges::find(kSchemes, active);
  if (found == std::end(kSchemes)) return false;
  *scheme = static_cast<uint32_t>(found - std::begin(kSchemes));
  return true;
}

bool SetActiveScheme(uint32_t scheme) {
  return scheme < std::size(kSchemes) && SetActivePowerScheme(kSchemes[scheme]);
}

bool ResetHistory() {
  if (!ControllerStarted) return false;
  PostForClient<SMEventData>(SMEvent::ResetHistory);
  return true;
}

bool SetStrength(int32_t strength) {
  const bool written =
      WritePredictorValue(kPredictorSection, kStrengthName, std::to_string(strength));
  if (ControllerStarted) PostForClient<ParamChangeEventData>(kStrengthName);
  return written;
}

bool GetStrength(int32_t* strength) {
  if (strength == nullptr) return false;
  *strength = Atoi(ReadPredictorValue(kPredictorSection, kStrengthName));
  return true;
}

}  // namespace dozewell
