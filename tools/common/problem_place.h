#ifndef DOZEWELL_COMMON_PROBLEM_PLACE_H_
#define DOZEWELL_COMMON_PROBLEM_PLACE_H_

#include <string>

#include "base/exception.h"
#include "common/tool_error.h"
#include "prediction/configurations.h"

namespace dozewell {

// What the engine is built from, as the user knows it.
struct EngineSources {
  std::string settings;
  std::string data;  // the data file or the history
};

// What the engine throws about when it is built: the settings and the keys that it cannot be built
// with, "s.ini: TimeResolution is missing", or else the data.
std::string PlaceOfProblem(IConfigurations& configuration, const EngineSources& sources);

// The same for a search: the settings and the ranges that hold a weight that no set may have, or
// else the history.
std::string PlaceOfSearchProblem(IConfigurations& configuration, const EngineSources& sources);

// What `run` returns. Throws ToolError with the place that `place` gives before the engine's text
// where the engine throws.
template <typename Run, typename Place>
auto TellPlace(Place place, Run run) {
  try {
    return run();
  } catch (const FixedTextException& error) {
    throw ToolError(place() + ": " + error.what());
  }
}

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_PROBLEM_PLACE_H_
