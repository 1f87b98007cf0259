#ifndef DOZEWELL_CTL_LIVE_ENGINE_H_
#define DOZEWELL_CTL_LIVE_ENGINE_H_

#include <string>

#include "common/tracker_file.h"
#include "prediction/configurations_impl.h"

namespace dozewell::ctl {

// The service's prediction engine on this machine's own settings and data file, of which it changes
// nothing.
class LiveEngine {
 public:
  // Throws what the engine throws when the settings make none.
  LiveEngine();

  ArbitraryCycleProbabilityTracker& Tracker() { return loaded_.tracker; }
  // Says that the data file was ignored and why; empty when it was loaded.
  std::string Warning() const;

 private:
  ConfigurationsImpl configuration_;
  std::wstring path_;
  LoadedTracker loaded_;
};

// Why the service cannot build its engine; empty when it can.
std::string EngineProblem();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_ENGINE_H_
