#include <windows.h>

#include "stand_ins/control_channel.h"
#include "stand_ins/failing_import.h"

// Lets the test close the console that the service runs in.

namespace dozewell::lab {
namespace {

BOOL WINAPI SetHandler(PHANDLER_ROUTINE handler, BOOL add);

const Import<decltype(SetConsoleCtrlHandler)> SetHandlerImport(
    SystemCallPlace("SetConsoleCtrlHandler"), SetHandler);

BOOL WINAPI SetHandler(PHANDLER_ROUTINE handler, BOOL add) {
  if (const uint32_t error = SetHandlerImport.CountCall()) return FailureOf<BOOL>(error);
  OpenConsoleChannel(handler);
  return SetHandlerImport.System(handler, add);
}

}  // namespace
}  // namespace dozewell::lab
