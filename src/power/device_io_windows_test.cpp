#include <doctest/doctest.h>
#include <windows.h>

// After windows.h, which it needs.
#include <setupapi.h>

#include <bit>
#include <cstdint>
#include <cwchar>

#include "power/device_io.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

// {72C9587E-F669-4F17-9912-0CE152C2472F}
constexpr GUID kInterfaceClass = {
    0x72C9587E, 0xF669, 0x4F17, {0x99, 0x12, 0x0C, 0xE1, 0x52, 0xC2, 0x47, 0x2F}};

const auto kDevices = std::bit_cast<HDEVINFO>(uint64_t{0x500});
const auto kDevice = std::bit_cast<HANDLE>(uint64_t{0x600});
constexpr wchar_t kPath[] = L"\\\\?\\root#device";
constexpr DWORD kDetailSize = 8 + sizeof(kPath);

// A machine with one device of the driver's, whose path tells from which record it was read.
struct DeviceStub {
  HDEVINFO devices = kDevices;
  BOOL present = TRUE;
  DWORD detailSize = kDetailSize;
  BOOL detailRead = TRUE;
  HANDLE device = kDevice;

  ImportStub<"SetupDiGetClassDevsW", decltype(SetupDiGetClassDevsW)> get{
      [this](const GUID*, const wchar_t*, HWND, DWORD) { return devices; }};
  ImportStub<"SetupDiEnumDeviceInterfaces", decltype(SetupDiEnumDeviceInterfaces)> enumerate{
      [this](HDEVINFO, SP_DEVINFO_DATA*, const GUID*, DWORD, SP_DEVICE_INTERFACE_DATA* found) {
        NoteSystemCall(SystemCall("  record", found->cbSize));
        found->Flags = SPINT_ACTIVE;
        return present;
      }};
  ImportStub<"SetupDiGetDeviceInterfaceDetailW", decltype(SetupDiGetDeviceInterfaceDetailW)> detail{
      [this](HDEVINFO, SP_DEVICE_INTERFACE_DATA* found, SP_DEVICE_INTERFACE_DETAIL_DATA_W* read,
             DWORD, DWORD* size, SP_DEVINFO_DATA*) {
        CHECK(found->Flags == SPINT_ACTIVE);
        if (read == nullptr) {
          *size = detailSize;
          return FALSE;
        }
        NoteSystemCall(SystemCall("  detail", read->cbSize));
        std::wcscpy(read->DevicePath, kPath);
        return detailRead;
      }};
  ImportStub<"CreateFileW", decltype(CreateFileW)> create{[this](const wchar_t*, DWORD, DWORD,
                                                                 SECURITY_ATTRIBUTES*, DWORD, DWORD,
                                                                 HANDLE) { return device; }};
  ImportStub<"SetupDiDestroyDeviceInfoList", decltype(SetupDiDestroyDeviceInfoList)> destroy{TRUE};
};

const Calls kFound = {SystemCall("SetupDiGetClassDevsW", kInterfaceClass, nullptr, nullptr,
                                 DIGCF_PRESENT | DIGCF_DEVICEINTERFACE)};
const Calls kEnumerated = {
    SystemCall("SetupDiEnumDeviceInterfaces", kDevices, nullptr, kInterfaceClass, 0, kMemory),
    SystemCall("  record", 32)};
const Calls kSized = {SystemCall("SetupDiGetDeviceInterfaceDetailW", kDevices, kMemory, nullptr, 0,
                                 kMemory, nullptr)};
const Calls kDetailed = {SystemCall("SetupDiGetDeviceInterfaceDetailW", kDevices, kMemory, kMemory,
                                    kDetailSize, nullptr, nullptr),
                         SystemCall("  detail", 8)};
const Calls kOpened = {SystemCall("CreateFileW", kPath, GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr),
                       SystemCall("SetupDiDestroyDeviceInfoList", kDevices)};

}  // namespace

TEST_CASE("the first device of the driver's class is opened for reading and writing, shared") {
  const DeviceStub machine;
  CHECK(OpenDevice() == kDevice);
  CHECK(TakeSystemCalls() == Joined({kFound, kEnumerated, kSized, kDetailed, kOpened}));
}

TEST_CASE("a device that does not open is the invalid one") {
  DeviceStub machine;
  machine.device = INVALID_HANDLE_VALUE;
  CHECK(OpenDevice() == kInvalidDevice);
  CHECK(TakeSystemCalls() == Joined({kFound, kEnumerated, kSized, kDetailed, kOpened}));
}

TEST_CASE("looking for the device ends where the system has nothing more to tell") {
  struct Row {
    void (*breakIt)(DeviceStub&);
    Calls calls;
  };
  const Row rows[] = {
      {[](DeviceStub& machine) { machine.devices = INVALID_HANDLE_VALUE; }, kFound},
      {[](DeviceStub& machine) { machine.present = FALSE; }, Joined({kFound, kEnumerated})},
      {[](DeviceStub& machine) { machine.detailSize = 0; }, Joined({kFound, kEnumerated, kSized})},
      {[](DeviceStub& machine) { machine.detailSize = 7; }, Joined({kFound, kEnumerated, kSized})},
      {[](DeviceStub& machine) { machine.detailRead = FALSE; },
       Joined({kFound, kEnumerated, kSized, kDetailed})},
  };
  for (const Row& row : rows) {
    DeviceStub machine;
    row.breakIt(machine);
    CHECK(OpenDevice() == kInvalidDevice);
    CHECK(TakeSystemCalls() == row.calls);
  }
}

TEST_CASE("a control goes to the device with its code and both buffers, and a close closes it") {
  const ImportStub<"CloseHandle", decltype(CloseHandle)> close{TRUE};
  const uint64_t input = 1;
  uint32_t output = 0;
  const std::string both =
      SystemCall("DeviceIoControl", kDevice, 0x9C402404U, kMemory, 8, kMemory, 4, kMemory, nullptr);
  const std::string none =
      SystemCall("DeviceIoControl", kDevice, 0x9C402408U, nullptr, 0, nullptr, 0, kMemory, nullptr);
  for (const BOOL done : {TRUE, FALSE}) {
    const ImportStub<"DeviceIoControl", decltype(DeviceIoControl)> control{done};
    CHECK(PerformIoControl(kDevice, 0x9C402404, &input, 8, &output, 4) == (done != FALSE));
    CHECK(TakeSystemCalls() == Calls{both});
    CHECK(PerformIoControl(kDevice, 0x9C402408, nullptr, 0, nullptr, 0) == (done != FALSE));
    CHECK(TakeSystemCalls() == Calls{none});
  }
  CloseDevice(kDevice);
  CHECK(TakeSystemCalls() == Calls{SystemCall("CloseHandle", kDevice)});
}

}  // namespace dozewell
