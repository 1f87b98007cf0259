#ifndef DOZEWELL_POWER_TIMER_DEVICE_H_
#define DOZEWELL_POWER_TIMER_DEVICE_H_

#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/lock.h"
#include "power/driver_device.h"
#include "power/driver_timer.h"

namespace dozewell {

// Takes the driver's place with a timer of the system's: it keeps a timer record as the driver
// does, and word 1 wakes the machine when it is written with a duration. Word 0, and word 1 with a
// time of the calendar, are kept and wake nothing. How the machine last slept it cannot tell.
//
// What it adds to the settings is for clients: kWindowsTimerStateName is there while it is open.
class TimerDevice : public IDeviceStandIn {
 public:
  // With a record of zeros. False when the system has no timer.
  bool Open();

  bool PerformControl(uint32_t code, const void* input, size_t inputSize, void* output,
                      size_t outputSize) override;
  void CancelTimer() override;
  bool CanWake() override;
  void Close() override;

 private:
  // That the timer ended a sleep. It holds for one resume only.
  struct Expiry {
    std::optional<uint64_t> wake;  // the resume, as LastSleep::woke, where the system tells it
  };

  TimerRecord Read();
  bool Write(const TimerRecord& record);
  bool Arm(uint32_t minutes);
  void Disarm();
  void Fire(int64_t now);
  bool IsExpired();
  void NoteWhetherItWakes(bool wakes);

  Lock lock_;  // guards all that follows
  void* timer_ = nullptr;
  bool wakes_ = false;
  // As it was written, but for what `due_` and `expiry_` say: whether word 1 has expired, and its
  // minutes when it is a duration.
  TimerRecord record_;
  std::optional<int64_t> due_;  // seconds since 1970 (UTC), while armed
  std::optional<Expiry> expiry_;
};

}  // namespace dozewell

#endif  // DOZEWELL_POWER_TIMER_DEVICE_H_
