#include <windows.h>
// After windows.h, which it needs.
#include <setupapi.h>

#include <cstdlib>

#include "power/device_io.h"

namespace dozewell {
namespace {

// {72C9587E-F669-4F17-9912-0CE152C2472F}
constexpr GUID kDriverInterfaceClass = {
    0x72C9587E, 0xF669, 0x4F17, {0x99, 0x12, 0x0C, 0xE1, 0x52, 0xC2, 0x47, 0x2F}};

// The sizes by which the Setup API tells the versions of its records apart.
static_assert(sizeof(SP_DEVICE_INTERFACE_DATA) == 32);
static_assert(sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_W) == 8);

}  // namespace

// An early return releases nothing: the service looks for the device only once, so no more than one
// small set of devices is kept until the process ends.
void* OpenDevice() {
  const HDEVINFO devices = SetupDiGetClassDevsW(&kDriverInterfaceClass, nullptr, nullptr,
                                                DIGCF_PRESENT | DIGCF_DEVICEINTERFACE);
  if (devices == INVALID_HANDLE_VALUE) return kInvalidDevice;

  SP_DEVICE_INTERFACE_DATA found = {};
  found.cbSize = sizeof(found);
  if (!SetupDiEnumDeviceInterfaces(devices, nullptr, &kDriverInterfaceClass, 0, &found)) {
    return kInvalidDevice;
  }

  DWORD size = 0;
  SetupDiGetDeviceInterfaceDetailW(devices, &found, nullptr, 0, &size, nullptr);
  // A call that fails leaves the size at 0, too small for the record's header.
  if (size < sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_W)) return kInvalidDevice;
  auto* const detail = static_cast<SP_DEVICE_INTERFACE_DETAIL_DATA_W*>(std::malloc(size));
  if (detail == nullptr) return kInvalidDevice;
  detail->cbSize = sizeof(*detail);
  if (!SetupDiGetDeviceInterfaceDetailW(devices, &found, detail, size, nullptr, nullptr)) {
    return kInvalidDevice;
  }

  const HANDLE device = CreateFileW(detail->DevicePath, GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  std::free(detail);
  SetupDiDestroyDeviceInfoList(devices);
  return device;
}

bool PerformIoControl(void* device, uint32_t code, const void* input, size_t inputSize,
                      void* output, size_t outputSize) {
  DWORD returned = 0;
  return DeviceIoControl(device, code, const_cast<void*>(input), static_cast<DWORD>(inputSize),
                         output, static_cast<DWORD>(outputSize), &returned, nullptr) != FALSE;
}

void CloseDevice(void* device) { CloseHandle(device); }

}  // namespace dozewell
