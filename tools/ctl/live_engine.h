#ifndef DOZEWELL_CTL_LIVE_ENGINE_H_
#define DOZEWELL_CTL_LIVE_ENGINE_H_

#include <string>
#include <vector>

#include "common/tracker_file.h"
#include "ctl/as_of.h"
#include "ctl/unsaved_learning.h"
#include "prediction/configurations_impl.h"

namespace dozewell::ctl {

// The service's prediction engine on this machine's own settings and data file. It changes neither.
class LiveEngine {
 public:
  // Throws what the engine throws for settings that it cannot use.
  LiveEngine();

  IConfigurations& Configuration() { return configuration_; }
  ArbitraryCycleProbabilityTracker& Tracker() { return loaded_.tracker; }
  // What a user should know before the engine's answers: why the data file was ignored, and that
  // the service does not act on predictions.
  std::vector<std::string> Warnings() const;

  // Learns what the service has not saved yet, and says how new the tracker is then. To be called
  // once. Throws CommandFailure when neither a data file nor the events tell of any learning.
  AsOf CatchUp(const UnsavedLearning& unsaved);

 private:
  ConfigurationsImpl configuration_;
  std::wstring path_;
  LoadedTracker loaded_;
};

// Throws CommandFailure when this user may not read what the service has learnt.
void RequireReadableData();

// Why the service cannot build its engine; empty when it can.
std::string EngineProblem();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_ENGINE_H_
