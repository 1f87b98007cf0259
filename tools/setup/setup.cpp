#include "setup/setup.h"

#include <algorithm>
#include <exception>

namespace dozewell::setup {
namespace {

std::string Usage(std::span<const Step> steps) {
  std::string names;
  for (const Step& step : steps) names += (names.empty() ? "" : ", ") + std::string(step.name);
  return "one argument is expected, which is one of: " + names;
}

}  // namespace

int RunSetup(const std::vector<std::string>& arguments, std::span<const Step> steps,
             const std::function<void(const std::string& message)>& report) {
  const auto step = arguments.size() == 1 ? std::ranges::find(steps, arguments.front(), &Step::name)
                                          : steps.end();
  if (step == steps.end()) {
    report(Usage(steps));
    return 2;
  }
  try {
    step->run();
    return 0;
  } catch (const std::exception& error) {
    report(error.what());
    return 1;
  }
}

}  // namespace dozewell::setup
