#include <windows.h>

#include "rpc/rpc_runtime.h"

namespace dozewell {
namespace {

// Stays set, so that a stop that comes before the wait ends it too.
HANDLE StopEvent() {
  static const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  return event;
}

}  // namespace

uint32_t WaitServerListen() {
  return WaitForSingleObject(StopEvent(), INFINITE) == WAIT_OBJECT_0 ? 0 : GetLastError();
}

uint32_t StopServerListening() { return SetEvent(StopEvent()) ? 0 : GetLastError(); }

}  // namespace dozewell
