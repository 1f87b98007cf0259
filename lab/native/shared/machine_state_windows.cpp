#include <windows.h>

#include "shared/machine_state.h"

namespace dozewell::lab {

MachineState* MapMachineState() {
  const HANDLE file =
      CreateFileW(kMachineStateFile, GENERIC_READ | GENERIC_WRITE,
                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return nullptr;
  LARGE_INTEGER size = {};
  GetFileSizeEx(file, &size);
  void* view = nullptr;
  if (size.QuadPart == sizeof(MachineState)) {
    const HANDLE mapping = CreateFileMappingW(file, nullptr, PAGE_READWRITE, 0, 0, nullptr);
    if (mapping != nullptr) {
      view = MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(MachineState));
      CloseHandle(mapping);
    }
  } else {
    SetLastError(ERROR_FILE_CORRUPT);
  }
  CloseHandle(file);
  return static_cast<MachineState*>(view);
}

}  // namespace dozewell::lab
