#include "power/driver_device.h"

#include "power/device_io.h"

namespace dozewell {

bool FindDriverDevice() {
  void* const device = OpenDevice();
  if (device == kInvalidDevice) return false;
  DriverHandle = device;
  return true;
}

bool HasDriverDevice() {
  void* const device = DriverHandle;
  return device != nullptr && device != kInvalidDevice;
}

bool CallDriver(uint32_t code, const void* input, size_t inputSize, void* output,
                size_t outputSize) {
  if (IDeviceStandIn* const standIn = DeviceStandIn) {
    return standIn->PerformControl(code, input, inputSize, output, outputSize);
  }
  void* const device = DriverHandle;
  return device != kInvalidDevice &&
         PerformIoControl(device, code, input, inputSize, output, outputSize);
}

void CancelStandInTimer() {
  if (IDeviceStandIn* const standIn = DeviceStandIn) standIn->CancelTimer();
}

void CloseDriverDevice() {
  // A late caller must find no device: the closed handle's value may soon stand for something else.
  void* const device = DriverHandle.exchange(nullptr);
  if (device != nullptr) CloseDevice(device);
  IDeviceStandIn* const standIn = DeviceStandIn.exchange(nullptr);
  if (standIn != nullptr) standIn->Close();
}

}  // namespace dozewell
