#ifndef DOZEWELL_LAB_SHARED_LINE_SERVER_H_
#define DOZEWELL_LAB_SHARED_LINE_SERVER_H_

#include <cstdint>

#include "shared/fields.h"

namespace dozewell::lab {

// What a request failed with, as the test is told.
struct SystemError {
  uint32_t code;
};

// Answers the fields of one request, or throws SystemError. Called on a thread for each
// connection.
using AnswerRequest = Fields (*)(const Fields& request);

// Serves connections from this machine for the rest of the process's life, on threads of its own.
// An answer's first field is "ok" or "error". The port, or 0 when there is none to be had.
uint32_t StartLineServer(AnswerRequest answer);

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_SHARED_LINE_SERVER_H_
