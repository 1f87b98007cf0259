#ifndef DOZEWELL_PREDICTION_PREDICTOR_H_
#define DOZEWELL_PREDICTION_PREDICTOR_H_

#include <vector>

#include "prediction/time_line.h"

namespace dozewell {

// Predicts when a machine will be idle and when it will be in use again. The operations are those
// of ITracker. Not thread-safe.
class IPredictor {
 public:
  virtual std::vector<PredictionRecord> GetPredictions(const tm& time) = 0;
  virtual std::vector<PredictionRecord> PredictHibernate(const tm& time) = 0;
  virtual std::vector<PredictionRecord> PredictWake(const tm& time) = 0;
  virtual float GetSlotProbability(int slot) = 0;
  virtual ~IPredictor() = default;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_PREDICTOR_H_
