#ifndef DOZEWELL_WALK_SLOT_SERVICE_H_
#define DOZEWELL_WALK_SLOT_SERVICE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "optimizer/best_set.h"
#include "optimizer/simulator/native_simulator_configurations.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/configurations.h"
#include "prediction/suspend_decision.h"

namespace dozewell {

// The service with the described predictor, at all strengths at once: what it learns is the same
// for all of them, only the parameters differ. Slots are of ten minutes. Not thread-safe.
class SlotService {
 public:
  // Begins with the parameters of the configuration, and at each strength with the set that is
  // stored for it there, if there is one. Throws FixedTextException for unusable parameters.
  SlotService(IConfigurations& configuration, size_t strengths);

  // Learns from an event, at wall-clock seconds. Throws FixedTextException for one that does not
  // follow the one before.
  void Learn(int64_t time, TimeLineState state);

  // Applies the stored text of a strength as the service does.
  void Apply(size_t strength, std::string_view text);

  // What a suspend at these wall-clock seconds is answered with, at a strength or with the
  // parameters of the configuration.
  SuspendDecision DecideAt(size_t strength, int64_t suspend);
  SuspendDecision DecideAsConfigured(int64_t suspend);

  SlotService(const SlotService&) = delete;
  SlotService& operator=(const SlotService&) = delete;

 private:
  using Parameters = std::array<std::string, kBestSetParameters.size()>;
  struct Strength {
    bool isDisabled;
    Parameters parameters;
  };
  // A tracker and what it reads.
  struct Tracked {
    NativeSimulatorConfigurations parameters;
    std::unique_ptr<ArbitraryCycleProbabilityTracker> tracker;
  };

  NativeSimulatorConfigurations ConfigurationsOf(const Parameters& parameters) const;
  ITracker& TrackerOf(const Parameters& parameters);
  void DropUnusedTrackers();

  std::string daysInCycle_;
  Parameters configured_;
  std::vector<Strength> strengths_;
  // Those of all parameters that are in use, made when they are first asked. They learn the same.
  std::map<Parameters, Tracked> trackers_;
};

}  // namespace dozewell

#endif  // DOZEWELL_WALK_SLOT_SERVICE_H_
