#ifndef DOZEWELL_SETUP_SERVICE_COMMAND_H_
#define DOZEWELL_SETUP_SERVICE_COMMAND_H_

#include <cstdint>
#include <string>

namespace dozewell::setup {

// The command line that the service control manager starts an open service with. Throws
// SystemError.
std::wstring CommandOf(void* service);

// How an open service is started, as the system counts it. Throws SystemError.
uint32_t StartTypeOf(void* service);

// The path of the program in such a command line: what is in quotation marks, or all of it when it
// does not begin with one, since this product's services are started without arguments.
std::wstring ProgramOf(const std::wstring& command);

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_SERVICE_COMMAND_H_
