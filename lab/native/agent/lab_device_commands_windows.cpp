#include <windows.h>

#include "agent/commands.h"

namespace dozewell::lab {

Fields ControlLabDevice(const Fields& arguments) {
  const HANDLE device =
      CreateFileW(L"\\\\.\\DozewellLab", GENERIC_READ | GENERIC_WRITE,
                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (device == INVALID_HANDLE_VALUE) throw SystemError{ERROR_DEV_NOT_EXIST};
  std::vector<uint8_t> input = FromHex(arguments[1]);
  std::vector<uint8_t> output(ToNumber(arguments[2]));
  DWORD returned = 0;
  const bool succeeded =
      DeviceIoControl(device, ToNumber(arguments[0]), input.data(),
                      static_cast<DWORD>(input.size()), output.data(),
                      static_cast<DWORD>(output.size()), &returned, nullptr) != 0;
  const DWORD error = GetLastError();
  CloseHandle(device);
  if (!succeeded) throw SystemError{error};
  return {ToHex(output.data(), returned)};
}

}  // namespace dozewell::lab
