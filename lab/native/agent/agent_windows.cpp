#include <windows.h>

#include <cstring>
#include <map>
#include <string>

#include "agent/commands.h"
#include "shared/machine_state.h"
#include "shared/system_calls.h"

// Does on the machine what the test asks for, so that a step needs no process of its own. It runs
// until the machine is switched off.

namespace dozewell::lab {
namespace {

Fields AnswerCommand(const Fields& request) {
  static const std::map<std::string, AnswerRequest> commands = {
      {"read-value", ReadValue},
      {"write-value", WriteValue},
      {"delete-value", DeleteValue},
      {"list-values", ListValues},
      {"delete-key", DeleteKey},
      {"create-service", CreateTheService},
      {"start-service", StartTheService},
      {"control-service", ControlTheService},
      {"query-service", QueryTheService},
      {"describe-service", DescribeTheService},
      {"delete-service", DeleteTheService},
      {"kill-process", KillProcess},
      {"remove-privilege", RemovePrivilege},
      {"control-lab-device", ControlLabDevice},
  };
  const auto command = commands.find(request[0]);
  if (command == commands.end()) throw WrongRequest();
  Fields arguments(request.begin() + 1, request.end());
  // A command that reads more fields than it was given finds them empty.
  arguments.resize(arguments.size() + 4);
  return command->second(arguments);
}

void NameSystemCalls(MachineState& state) {
  for (size_t place = 0; place < std::size(kSystemCalls); ++place) {
    const std::string_view name = kSystemCalls[place];
    std::memcpy(state.calls[place].name, name.data(), name.size());
  }
}

// Makes the system start the program that keeps the desktop's window. That stays as long as this
// one does and inherits its streams: started by a program with pipes, it would keep these open, and
// who reads them would wait for ever.
void StartDesktop() { GetDesktopWindow(); }

int Run() {
  MachineState* const state = MapMachineState();
  if (state == nullptr) return 1;
  StartDesktop();
  state->size = sizeof(MachineState);
  NameSystemCalls(*state);
  const uint32_t port = StartLineServer(AnswerCommand);
  if (port == 0) return 1;
  state->agentPort = port;
  Sleep(INFINITE);
  return 0;
}

}  // namespace
}  // namespace dozewell::lab

int main() { return dozewell::lab::Run(); }
