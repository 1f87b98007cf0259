#include "setup/setup.h"

#include <algorithm>
#include <exception>

namespace dozewell::setup {
namespace {

std::string Usage(std::span<const Step> steps) {
  std::string names;
  for (const Step& step : steps) {
    names += (names.empty() ? "" : ", ") + std::string(step.name);
    if (step.argument != nullptr) names += std::string(" ") + step.argument;
  }
  return "one step is expected, which is one of: " + names;
}

// Null when the arguments name no step, or are too few or too many for it.
const Step* FindStep(const std::vector<std::string>& arguments, std::span<const Step> steps) {
  if (arguments.empty()) return nullptr;
  const auto step = std::ranges::find(steps, arguments.front(), &Step::name);
  if (step == steps.end()) return nullptr;
  const size_t expected = step->argument == nullptr ? 1 : 2;
  return arguments.size() == expected ? &*step : nullptr;
}

}  // namespace

int RunSetup(const std::vector<std::string>& arguments, std::span<const Step> steps,
             const Reports& reports) {
  const Step* const step = FindStep(arguments, steps);
  if (step == nullptr) {
    reports.error(Usage(steps));
    return 2;
  }
  try {
    const std::string note = step->run(arguments.back());
    if (!note.empty()) reports.information(note);
    return 0;
  } catch (const std::exception& error) {
    reports.error(error.what());
    return 1;
  }
}

}  // namespace dozewell::setup
