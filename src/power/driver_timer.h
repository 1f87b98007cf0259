#ifndef DOZEWELL_POWER_DRIVER_TIMER_H_
#define DOZEWELL_POWER_DRIVER_TIMER_H_

#include <array>
#include <cstddef>
#include <cstdint>

namespace dozewell {

// The driver's wake timers and its memory of the last sleep. Any thread; failures are silent, and
// without a device everything fails. Nothing here is atomic towards other users of the driver.

// The driver's I/O controls.
inline constexpr uint32_t kWriteTimerControl = 0x9C402404;
inline constexpr uint32_t kReadTimerControl = 0x9C402408;
inline constexpr uint32_t kReadPreviousSleepStatusControl = 0x9C402410;

// Both words of the hardware timer, as the driver reads and writes them.
struct TimerRecord {
  std::array<uint32_t, 2> words = {};

  bool operator==(const TimerRecord&) const = default;
};
static_assert(sizeof(TimerRecord) == 8);

// What a word of the record holds. The two bits between flags and payload are the driver's own.
inline constexpr uint32_t kTimerEnabled = 0x80000000;
inline constexpr uint32_t kTimerExpired = 0x40000000;
inline constexpr uint32_t kTimerPayload = 0x0FFFFFFF;

// A payload that is a number of minutes from now: kTimerDurationForm with the minutes in its low
// bits.
inline constexpr uint32_t kTimerDurationForm = 0x08000000;
inline constexpr uint32_t kTimerDurationMinutes = 0x000FFFFF;

// The payload of a duration; minutes beyond 20 bits are cut off.
constexpr uint32_t TimerDurationPayload(uint32_t minutes) {
  return (minutes & kTimerDurationMinutes) | kTimerDurationForm;
}

// Which word wakes the machine at a time of the calendar, and which after a duration.
inline constexpr size_t kAlarmWord = 0;
inline constexpr size_t kDurationWord = 1;

// How the machine last slept, as far as the service tells the driver's values apart.
inline constexpr uint32_t kSleepWentOnToHibernation = 4;
inline constexpr uint32_t kSleepEndedByTimer = 5;

bool ReadDriverTimer(TimerRecord& record);
bool WriteDriverTimer(const TimerRecord& record);

// Sets `status` to 0 before it asks, so a failure leaves 0.
bool ReadPreviousSleepStatus(uint32_t& status);

class CDriverFuncCall {
 public:
  virtual ~CDriverFuncCall() = default;

  // Enables the timer of one word with bits 0 to 27 of `payload`; the word's other bits and the
  // other word go back to the driver as it gave them. False when the record could not be read,
  // and then nothing is written, or could not be written.
  bool ArmDriverTimerAlarm(uint32_t payload);
  bool ArmDriverTimerDuration(uint32_t payload);
};

extern CDriverFuncCall DriverFuncCall;

}  // namespace dozewell

#endif  // DOZEWELL_POWER_DRIVER_TIMER_H_
