#ifndef DOZEWELL_POWERWATCH_COMMAND_LINE_H_
#define DOZEWELL_POWERWATCH_COMMAND_LINE_H_

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace dozewell::powerwatch {

// What the commands do. The first two return what there is to say to the user, and throw
// std::exception when they fail.
struct Actions {
  std::function<std::string()> install;
  std::function<std::string()> remove;
  // Serves the process as a service to its end; the system's error code when the system did not
  // start it as one.
  std::function<uint32_t()> serve;
};

struct Printers {
  std::function<void(const std::string& text)> output;
  std::function<void(const std::string& message)> error;
};

// Does what the arguments say, which is to serve when there are none. Returns the process's exit
// code: 0 done, 1 not done, 2 wrong usage.
int RunPowerwatch(const std::vector<std::string>& arguments, const Actions& actions,
                  const Printers& printers);

}  // namespace dozewell::powerwatch

#endif  // DOZEWELL_POWERWATCH_COMMAND_LINE_H_
