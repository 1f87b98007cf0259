#ifndef DOZEWELL_LAB_SHARED_LINE_SERVER_H_
#define DOZEWELL_LAB_SHARED_LINE_SERVER_H_

#include <cstdint>

#include "shared/fields.h"

namespace dozewell::lab {

// A call of the system that failed, of which the test is told the code.
struct SystemError {
  uint32_t code;
};

// A request that the test would not make, after which its connection is closed.
struct WrongRequest {};

// Answers the fields of one request, or throws SystemError or WrongRequest. Each connection has a
// thread that calls it.
using AnswerRequest = Fields (*)(const Fields& request);

// A file with the text that only the test and its machine know. Everybody on the computer can
// connect, and the server does whatever it is asked with its own user's rights, so this file must
// be readable for that user alone.
inline constexpr wchar_t kTokenFile[] = L"C:\\lab\\token";

// Serves connections from this computer, on threads of its own, until the process ends. A
// connection whose first line is not the token is closed at once. An answer's first field is "ok"
// or "error". Returns the port, or 0 when the server cannot be started or there is no token.
uint32_t StartLineServer(AnswerRequest answer);

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_SHARED_LINE_SERVER_H_
