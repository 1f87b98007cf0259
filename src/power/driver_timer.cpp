#include "power/driver_timer.h"

#include "power/driver_device.h"

namespace dozewell {
namespace {

bool ArmWord(size_t word, uint32_t payload) {
  TimerRecord record;
  if (!ReadDriverTimer(record)) return false;
  const uint32_t kept = record.words[word] & ~kTimerPayload;
  record.words[word] = kept | (payload & kTimerPayload) | kTimerEnabled;
  return WriteDriverTimer(record);
}

}  // namespace

CDriverFuncCall DriverFuncCall;

bool ReadDriverTimer(TimerRecord& record) {
  return CallDriver(kReadTimerControl, nullptr, 0, &record, sizeof(record));
}

bool WriteDriverTimer(const TimerRecord& record) {
  return CallDriver(kWriteTimerControl, &record, sizeof(record), nullptr, 0);
}

bool ReadPreviousSleepStatus(uint32_t& status) {
  status = 0;
  return CallDriver(kReadPreviousSleepStatusControl, nullptr, 0, &status, sizeof(status));
}

bool CDriverFuncCall::ArmDriverTimerAlarm(uint32_t payload) { return ArmWord(kAlarmWord, payload); }

bool CDriverFuncCall::ArmDriverTimerDuration(uint32_t payload) {
  return ArmWord(kDurationWord, payload);
}

}  // namespace dozewell
