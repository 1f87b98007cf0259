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
  const char* argument;  // what stands for its argument in the usage; null when it takes none
  // Returns what an administrator should know, empty for nothing. Throws std::exception with the
  // one line that the administrator reads.
  std::string (*run)(const std::string& argument);
};

// Who is told: why the program's exit code is not 0, and what an administrator should know.
struct Reports {
  std::function<void(const std::string& message)> error;
  std::function<void(const std::string& message)> information;
};

// Takes the step that the first argument names, and returns the program's exit code: 0 done, 1 not
// done, 2 wrong usage.
int RunSetup(const std::vector<std::string>& arguments, std::span<const Step> steps,
             const Reports& reports);

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_SETUP_H_
