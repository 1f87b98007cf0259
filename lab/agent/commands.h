#ifndef DOZEWELL_LAB_AGENT_COMMANDS_H_
#define DOZEWELL_LAB_AGENT_COMMANDS_H_

#include "shared/line_server.h"

namespace dozewell::lab {

// What the test can ask the agent for. Each takes the request's fields after the command's name and
// throws SystemError with the system's code. Keys are below HKEY_LOCAL_MACHINE unless they begin
// with "HKCU\".

// KEY NAME -> TYPE DATA
Fields ReadValue(const Fields& arguments);
// KEY NAME TYPE DATA; creates the key
Fields WriteValue(const Fields& arguments);
// KEY NAME
Fields DeleteValue(const Fields& arguments);
// KEY -> NAME...
Fields ListValues(const Fields& arguments);
// KEY, with all below it
Fields DeleteKey(const Fields& arguments);

// NAME TYPE START PATH
Fields CreateTheService(const Fields& arguments);
// NAME
Fields StartTheService(const Fields& arguments);
// NAME CONTROL -> STATE, the service's answer
Fields ControlTheService(const Fields& arguments);
// NAME -> STATE PROCESS CONTROLS WAITHINT EXITCODE
Fields QueryTheService(const Fields& arguments);
// NAME STATE MILLISECONDS -> as QueryTheService, when the state is reached or the time is over
Fields AwaitTheService(const Fields& arguments);
// NAME -> TYPE START ERRORCONTROL PATH DISPLAYNAME ACCOUNT DESCRIPTION
Fields DescribeTheService(const Fields& arguments);
// NAME
Fields DeleteTheService(const Fields& arguments);

// PROCESS; waits until it is gone
Fields KillProcess(const Fields& arguments);

// CODE INPUT OUTPUTSIZE -> OUTPUT, a control of the lab driver's private device
Fields ControlDriver(const Fields& arguments);

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_AGENT_COMMANDS_H_
