#include "ctl/live_engine.h"

#include <exception>

#include "base/file.h"
#include "base/utf8.h"
#include "prediction/cyclic_probability_predictor.h"
#include "settings/data_folder.h"

namespace dozewell::ctl {

// GetDataFolder would create the folder, and make it the user's own.
LiveEngine::LiveEngine()
    : path_(PathInFolder(DataFolderPath(), kDataFileName)),
      loaded_(LoadTracker(configuration_, path_)) {}

std::string LiveEngine::Warning() const {
  const char* const why = WhyIgnored(loaded_.state);
  return why != nullptr ? NarrowToUtf8(path_) + ": ignored: " + why : "";
}

std::string EngineProblem() {
  try {
    const LiveEngine engine;
    return {};
  } catch (const std::exception& error) {
    return error.what();
  }
}

}  // namespace dozewell::ctl
