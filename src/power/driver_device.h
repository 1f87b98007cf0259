#ifndef DOZEWELL_POWER_DRIVER_DEVICE_H_
#define DOZEWELL_POWER_DRIVER_DEVICE_H_

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace dozewell {

// The driver's device (a HANDLE). Null until OpenDriverDevice has found one and again after
// CloseDriverDevice; the controller may already run while it is still null.
inline std::atomic<void*> DriverHandle{nullptr};

// Finds and opens the driver's device. Without one DriverHandle stays as it is, unreported.
// The service main thread, once.
void OpenDriverDevice();

// Whether there is an open device. Any thread.
bool HasDriverDevice();

// Performs one I/O control on DriverHandle; sizes are in bytes, and a null buffer goes with size 0.
// A null handle is tried like any other and fails. Any thread.
bool CallDriver(uint32_t code, const void* input, size_t inputSize, void* output,
                size_t outputSize);

// Closes DriverHandle when it is not null. The service main thread, after every other user.
void CloseDriverDevice();

}  // namespace dozewell

#endif  // DOZEWELL_POWER_DRIVER_DEVICE_H_
