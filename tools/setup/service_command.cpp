#include "setup/service_command.h"

namespace dozewell::setup {

std::wstring ProgramOf(const std::wstring& command) {
  if (!command.starts_with(L'"')) return command;
  return command.substr(1, command.find(L'"', 1) - 1);
}

}  // namespace dozewell::setup
