#include "ctl/check/program_path.h"

#include <cstddef>

#include "common/text.h"

namespace dozewell::ctl {

std::string ProgramOf(std::string_view command) {
  if (command.starts_with('"')) {
    return std::string(command.substr(1, command.find('"', 1) - 1));
  }
  constexpr std::string_view kExtension = ".exe";
  for (size_t at = 0; at + kExtension.size() <= command.size(); ++at) {
    const size_t end = at + kExtension.size();
    const bool ends = end == command.size() || command[end] == ' ';
    if (ends && EqualIgnoringCase(command.substr(at, kExtension.size()), kExtension)) {
      return std::string(command.substr(0, end));
    }
  }
  return std::string(command);
}

bool IsAmbiguous(std::string_view command) {
  return !command.starts_with('"') && ProgramOf(command).find(' ') != std::string::npos;
}

}  // namespace dozewell::ctl
