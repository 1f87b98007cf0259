#ifndef DOZEWELL_SETUP_SETUP_H_
#define DOZEWELL_SETUP_SETUP_H_

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace dozewell::setup {

inline constexpr const char* kProgramName = "dozewell-setup";

// A step of an installation that the installer cannot take by itself.
struct Step {
  const char* name;
  void (*run)();  // throws std::exception with the one line that the user reads
};

// Takes the step that the only argument names, and returns the program's exit code: 0 done, 1 not
// done, 2 wrong usage. `report` gets the reason when it is not 0.
int RunSetup(const std::vector<std::string>& arguments, std::span<const Step> steps,
             const std::function<void(const std::string& message)>& report);

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_SETUP_H_
