#ifndef DOZEWELL_COMMON_MESSAGES_H_
#define DOZEWELL_COMMON_MESSAGES_H_

#include <string>

namespace dozewell {

// "<what>: <reason>", where the reason is what errno says. A call that fails without setting errno
// adds no reason, if the caller cleared errno before.
std::string WithReason(std::string what);

// Prints "<program>: <message>" to standard error, in one line whatever names and contents the
// message quotes.
void PrintMessage(const char* program, const std::string& message);

// Prints to standard output and flushes it. Throws std::runtime_error when that fails.
void PrintOutput(const std::string& output);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_MESSAGES_H_
