#ifndef DOZEWELL_POWER_DRIVER_DEVICE_H_
#define DOZEWELL_POWER_DRIVER_DEVICE_H_

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace dozewell {

// The driver's device (a HANDLE). Null until FindDriverDevice has found one and again after
// CloseDriverDevice; the controller may already run while it is still null.
inline std::atomic<void*> DriverHandle{nullptr};

// Answers the driver's controls on a machine without the driver. Any thread.
class IDeviceStandIn {
 public:
  virtual ~IDeviceStandIn() = default;

  // As PerformIoControl of device_io.h.
  virtual bool PerformControl(uint32_t code, const void* input, size_t inputSize, void* output,
                              size_t outputSize) = 0;
  // From now on nothing wakes the machine until the next arming.
  virtual void CancelTimer() = 0;
  // False once the system has said that its timer cannot wake this machine.
  virtual bool CanWake() = 0;
  // Leaves no timer armed; every control fails from now on.
  virtual void Close() = 0;
};

// Null unless OpenDriverDevice has found no device and the settings want a stand-in for it. Not
// owned, and never destroyed, as a late caller may still use it.
inline std::atomic<IDeviceStandIn*> DeviceStandIn{nullptr};

// Finds and opens the driver's device. Without one DriverHandle stays as it is, unreported, and the
// answer is false. One thread, once.
bool FindDriverDevice();

// Whether there is an open device of the driver. Any thread.
bool HasDriverDevice();

// Performs one I/O control on DriverHandle, or on the stand-in where there is one; sizes are in
// bytes, and a null buffer goes with size 0. A null handle is tried like any other and fails. Any
// thread.
bool CallDriver(uint32_t code, const void* input, size_t inputSize, void* output,
                size_t outputSize);

// Cancels the timer of the stand-in. The driver has no control for that: its timer goes off while
// the machine is awake. Any thread.
void CancelStandInTimer();

// Closes DriverHandle or the stand-in, if there is one. The service main thread, after every other
// user.
void CloseDriverDevice();

}  // namespace dozewell

#endif  // DOZEWELL_POWER_DRIVER_DEVICE_H_
