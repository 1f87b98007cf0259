#ifndef DOZEWELL_LAB_SHARED_LINE_SERVER_H_
#define DOZEWELL_LAB_SHARED_LINE_SERVER_H_

#include <cstdint>

#include "shared/fields.h"

namespace dozewell::lab {

// A call of the system that failed, of which the test is told the code.
struct SystemError {
  uint32_t code;
};

// Answers the fields of one request, or throws SystemError. Each connection has a thread that calls
// it.
using AnswerRequest = Fields (*)(const Fields& request);

// Serves connections from this machine, on threads of its own, until the process ends. An answer's
// first field is "ok" or "error". Returns the port, or 0 when the server cannot be started.
uint32_t StartLineServer(AnswerRequest answer);

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_SHARED_LINE_SERVER_H_
