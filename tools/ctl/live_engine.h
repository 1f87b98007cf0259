#ifndef DOZEWELL_CTL_LIVE_ENGINE_H_
#define DOZEWELL_CTL_LIVE_ENGINE_H_

#include <string>
#include <vector>

#include "common/tracker_file.h"
#include "prediction/configurations_impl.h"

namespace dozewell::ctl {

// The service's prediction engine on this machine's own settings and data file, of which it changes
// nothing.
class LiveEngine {
 public:
  // Throws what the engine throws when the settings make none.
  LiveEngine();

  IConfigurations& Configuration() { return configuration_; }
  ArbitraryCycleProbabilityTracker& Tracker() { return loaded_.tracker; }
  // What to know before what the engine says: that the data file was ignored and why, and that the
  // service does nothing of it.
  std::vector<std::string> Warnings() const;

 private:
  ConfigurationsImpl configuration_;
  std::wstring path_;
  LoadedTracker loaded_;
};

// Why the service cannot build its engine; empty when it can.
std::string EngineProblem();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_ENGINE_H_
