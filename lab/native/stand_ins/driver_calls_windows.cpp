#include <windows.h>
// Needs windows.h before it.
#include <setupapi.h>

#include <cstring>
#include <string>

#include "driver/lab_device.h"
#include "stand_ins/failing_import.h"
#include "stand_ins/service_record.h"

// Records the service's search for the driver and what it asks the driver. The system and the
// driver themselves answer.

namespace dozewell::lab {
namespace {

BOOL WINAPI Control(HANDLE device, DWORD code, void* input, DWORD inputSize, void* output,
                    DWORD outputSize, DWORD* returned, OVERLAPPED* overlapped);

HDEVINFO WINAPI Search(const GUID* interfaceClass, const wchar_t* enumerator, HWND parent,
                       DWORD flags);

const Import<decltype(DeviceIoControl)> ControlImport(SystemCallPlace("DeviceIoControl"), Control);
const Import<decltype(SetupDiGetClassDevsW)> SearchImport(SystemCallPlace("SetupDiGetClassDevsW"),
                                                          Search);

std::string Words(const void* data, DWORD size) {
  std::string text;
  for (DWORD offset = 0; offset + sizeof(uint32_t) <= size; offset += sizeof(uint32_t)) {
    uint32_t word = 0;
    std::memcpy(&word, static_cast<const BYTE*>(data) + offset, sizeof(word));
    text += Format(" 0x%x", word);
  }
  return text;
}

const char* NameOf(DWORD code) {
  switch (code) {
    case LAB_IOCTL_WRITE_TIMER:
      return "write timer";
    case LAB_IOCTL_READ_TIMER:
      return "read timer";
    case LAB_IOCTL_READ_STATUS:
      return "read status";
    default:
      return "unknown";
  }
}

BOOL WINAPI Control(HANDLE device, DWORD code, void* input, DWORD inputSize, void* output,
                    DWORD outputSize, DWORD* returned, OVERLAPPED* overlapped) {
  const uint32_t injected = ControlImport.CountCall();
  const BOOL succeeded =
      injected == 0 && ControlImport.System(device, code, input, inputSize, output, outputSize,
                                            returned, overlapped);
  const DWORD error = injected != 0 ? injected : GetLastError();
  Record("driver", NameOf(code) + Words(input, inputSize) +
                       (succeeded ? Words(output, *returned) : Format(" error %lu", error)));
  SetLastError(error);
  return succeeded;
}

HDEVINFO WINAPI Search(const GUID* interfaceClass, const wchar_t* enumerator, HWND parent,
                       DWORD flags) {
  Record("device", "search");
  if (const uint32_t error = SearchImport.CountCall()) {
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
  }
  return SearchImport.System(interfaceClass, enumerator, parent, flags);
}

}  // namespace
}  // namespace dozewell::lab
