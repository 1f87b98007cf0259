#ifndef DOZEWELL_TESTS_FAKES_EVENT_LOG_FAKE_H_
#define DOZEWELL_TESTS_FAKES_EVENT_LOG_FAKE_H_

#include <string>
#include <vector>

#include "fakes/call_failer.h"
#include "support/calls.h"

namespace dozewell::fakes {

// The event log and the debugger, which keep what reaches them.
struct EventLog {
  // In order, texts as UTF-8: "open <source>", "report <type> <text>", "clear", "close" ("close
  // null" without a source) and "trace <text>".
  Calls calls;
  CallFailer openFailer;
  CallFailer reportFailer;

  // The rest of each call that begins with the prefix, such as "report 4 ", in order.
  Calls After(const std::string& prefix) const;
};
extern EventLog eventLog;

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_EVENT_LOG_FAKE_H_
