#ifndef DOZEWELL_TESTS_FAKES_SERVICE_FAKE_H_
#define DOZEWELL_TESTS_FAKES_SERVICE_FAKE_H_

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "fakes/call_failer.h"
#include "support/calls.h"

namespace dozewell::fakes {

// The service control manager, the console and the RPC runtime of a machine.
struct Service {
  // In order, such as "register handler", "status 4 0" (state and wait hint), "register
  // notification", "wait", "stop listening", "create DozewellService \"C:\\a b\\x.exe\"".
  Calls calls;
  CallFailer failer;    // counts the calls
  uint32_t error = 5;   // what a failing call leaves
  bool exists = false;  // whether the service is installed
  // Whether a control handler is registered: without one no status can be sent, and there are no
  // notifications.
  bool registered = false;
  bool listening = false;  // whether the RPC server listens and was not told to stop
  // What happens while the RPC server waits, the dispatcher serves the process, a status is sent.
  std::function<void()> whileListening;
  std::function<void()> whileServing;
  std::function<void()> whileSendingStatus;
};
extern Service service;

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_SERVICE_FAKE_H_
