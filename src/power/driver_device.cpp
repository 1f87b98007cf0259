#include "power/driver_device.h"

#include "power/device_io.h"

namespace dozewell {

void OpenDriverDevice() {
  void* const device = OpenDevice();
  if (device != kInvalidDevice) DriverHandle = device;
}

bool HasDriverDevice() {
  void* const device = DriverHandle;
  return device != nullptr && device != kInvalidDevice;
}

bool CallDriver(uint32_t code, const void* input, size_t inputSize, void* output,
                size_t outputSize) {
  void* const device = DriverHandle;
  return device != kInvalidDevice &&
         PerformIoControl(device, code, input, inputSize, output, outputSize);
}

void CloseDriverDevice() {
  // A late caller must find no device: the closed handle's value may soon stand for something else.
  void* const device = DriverHandle.exchange(nullptr);
  if (device != nullptr) CloseDevice(device);
}

}  // namespace dozewell
