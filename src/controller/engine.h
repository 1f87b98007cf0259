#ifndef DOZEWELL_CONTROLLER_ENGINE_H_
#define DOZEWELL_CONTROLLER_ENGINE_H_

#include <cstdint>
#include <memory>
#include <optional>

#include "base/wall_clock.h"
#include "prediction/configurations_impl.h"
#include "prediction/historian.h"
#include "prediction/predictor.h"
#include "prediction/predictor_choice.h"

namespace dozewell {

// NextHAMinutes when there is none.
inline constexpr uint32_t kNoHA = 0xFFFFFFFF;

// The objects of the prediction engine. The predictor refers to the others, so it is deleted first.
struct EngineObjects {
  std::unique_ptr<ConfigurationsImpl> configurations;
  std::unique_ptr<HistorianImpl> historian;
  std::unique_ptr<IPredictor> predictor;

  // Deletes the predictor and builds the chosen one over configurations and historian. The new one
  // takes over what the old one could not save. Throws what its constructor throws; then there is
  // no predictor.
  PredictorChoice RenewPredictor();
};

// What the sleep controller works with. The objects are null while the controller is stopped; the
// predictor is also null after building one has failed. All of it under ControllerLock.
struct Engine : EngineObjects {
  // Time stamp of the last suspend.
  tm suspendTime = {};
  // The hibernate-after timeout in minutes to set after a timer wake, or kNoHA.
  uint32_t nextHAMinutes = kNoHA;
  // Start of the second predicted idle period; the machine goes back to sleep then.
  std::optional<tm> nextSleepTime;
};

// Never destroyed, like the lock that guards it.
extern Engine& engine;

}  // namespace dozewell

#endif  // DOZEWELL_CONTROLLER_ENGINE_H_
