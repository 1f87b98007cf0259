#include <windows.h>

#include "shared/line_server.h"
#include "stand_ins/clock.h"
#include "stand_ins/control_channel.h"
#include "stand_ins/service_record.h"

namespace dozewell::lab {
namespace {

ControlHandler Handler = nullptr;
void* Context = nullptr;
ConsoleHandler HandlerOfConsole = nullptr;

int64_t PerformanceCount() {
  LARGE_INTEGER count;
  QueryPerformanceCounter(&count);
  return count.QuadPart;
}

int64_t PerformanceCountsPerSecond() {
  LARGE_INTEGER frequency;
  QueryPerformanceFrequency(&frequency);
  return frequency.QuadPart;
}

// CONTROL EVENTTYPE DATA -> RESULT MICROSECONDS; the answer comes when the handler has returned.
Fields Deliver(const Fields& request) {
  std::vector<uint8_t> data = FromHex(request[3]);
  const int64_t start = PerformanceCount();
  const unsigned long result = Handler(ToNumber(request[1]), ToNumber(request[2]),
                                       data.empty() ? nullptr : data.data(), Context);
  const int64_t microseconds =
      (PerformanceCount() - start) * 1000000 / PerformanceCountsPerSecond();
  return {std::to_string(result), std::to_string(microseconds)};
}

// Windows ends a program as soon as its handler has returned, whatever its other threads do.
[[noreturn]] void CloseConsole() {
  HandlerOfConsole(CTRL_CLOSE_EVENT);
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_CONTROL_C_EXIT));
  for (;;) Sleep(INFINITE);
}

Fields Answer(const Fields& request) {
  if (request[0] == "deliver" && request.size() == 4) return Deliver(request);
  if (request[0] == "close-console" && HandlerOfConsole != nullptr) CloseConsole();
  if (request[0] == "wake") {
    WakeSleepers();
    return {};
  }
  throw WrongRequest();
}

}  // namespace

void OpenControlChannel(ControlHandler handler, void* context) {
  Handler = handler;
  Context = context;
  Machine->servicePort = StartLineServer(Answer);
}

void OpenConsoleChannel(ConsoleHandler handler) {
  HandlerOfConsole = handler;
  Machine->servicePort = StartLineServer(Answer);
}

}  // namespace dozewell::lab
