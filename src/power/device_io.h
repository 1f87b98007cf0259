#ifndef DOZEWELL_POWER_DEVICE_IO_H_
#define DOZEWELL_POWER_DEVICE_IO_H_

#include <bit>
#include <cstddef>
#include <cstdint>

namespace dozewell {

// The system's calls on the driver's device, behind driver_device.h. Any thread.

// The system's INVALID_HANDLE_VALUE.
inline void* const kInvalidDevice = std::bit_cast<void*>(UINTPTR_MAX);

// Opens the first present device of the driver's interface class; kInvalidDevice when there is none
// or it does not open. The caller closes the device with CloseDevice.
void* OpenDevice();

// Performs one buffered I/O control; sizes are in bytes, and a null buffer goes with size 0. False
// when the call failed, as it does on a null device.
bool PerformIoControl(void* device, uint32_t code, const void* input, size_t inputSize,
                      void* output, size_t outputSize);

void CloseDevice(void* device);

}  // namespace dozewell

#endif  // DOZEWELL_POWER_DEVICE_IO_H_
