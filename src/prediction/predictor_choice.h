#ifndef DOZEWELL_PREDICTION_PREDICTOR_CHOICE_H_
#define DOZEWELL_PREDICTION_PREDICTOR_CHOICE_H_

#include <atomic>

#include "prediction/configurations.h"

namespace dozewell {

enum class PredictorKind { Slots, Rates };

// The predictor that kPredictorName chooses.
struct PredictorChoice {
  PredictorKind kind;
  bool isKnown;  // the value is absent or names a predictor
};

PredictorChoice ReadPredictorChoice(IConfigurations& configuration);

// Whether the controller's predictor is the one of rates, which is not tuned: no search, and no
// result of a search, concerns it. Set under ControllerLock, or before the controller starts; read
// on any thread.
inline std::atomic<bool> RatesInForce{false};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_PREDICTOR_CHOICE_H_
