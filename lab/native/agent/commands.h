#ifndef DOZEWELL_LAB_AGENT_COMMANDS_H_
#define DOZEWELL_LAB_AGENT_COMMANDS_H_

#include "shared/line_server.h"

namespace dozewell::lab {

// What the test can ask the agent for. Each command takes the request's fields after its name, and
// throws SystemError with the system's code when it fails. Keys are below HKEY_LOCAL_MACHINE unless
// they begin with "HKCU\".

// KEY NAME -> TYPE DATA
Fields ReadValue(const Fields& arguments);
// KEY NAME TYPE DATA; creates the key
Fields WriteValue(const Fields& arguments);
// KEY NAME
Fields DeleteValue(const Fields& arguments);
// KEY -> NAME...
Fields ListValues(const Fields& arguments);
// KEY; deletes the keys below it too
Fields DeleteKey(const Fields& arguments);

// NAME TYPE START PATH
Fields CreateTheService(const Fields& arguments);
// NAME
Fields StartTheService(const Fields& arguments);
// NAME CONTROL -> STATE, the service's answer
Fields ControlTheService(const Fields& arguments);
// NAME -> STATE PROCESS CONTROLS WAITHINT EXITCODE
Fields QueryTheService(const Fields& arguments);
// NAME -> TYPE START ERRORCONTROL PATH DISPLAYNAME ACCOUNT DESCRIPTION
Fields DescribeTheService(const Fields& arguments);
// NAME
Fields DeleteTheService(const Fields& arguments);

// PROCESS; waits until it is gone
Fields KillProcess(const Fields& arguments);
// PROCESS PRIVILEGE; the process has it no more
Fields RemovePrivilege(const Fields& arguments);

// CODE INPUT OUTPUTSIZE -> OUTPUT, for a control of the lab driver's private device
Fields ControlLabDevice(const Fields& arguments);

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_AGENT_COMMANDS_H_
