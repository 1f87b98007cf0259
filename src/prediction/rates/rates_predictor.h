#ifndef DOZEWELL_PREDICTION_RATES_RATES_PREDICTOR_H_
#define DOZEWELL_PREDICTION_RATES_RATES_PREDICTOR_H_

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "prediction/configurations.h"
#include "prediction/historian.h"
#include "prediction/predictor.h"
#include "prediction/rates/rate_decision.h"
#include "prediction/rates/rates_state.h"
#include "prediction/rates/return_forecast.h"

namespace dozewell {

// The scoring weight of the chosen strength.
int32_t ReadWeight(IConfigurations& configuration);

// A decision on a suspend at a valid time, as a predictor gives it.
std::vector<PredictionRecord> RecordsOf(const RateDecision& decision, const tm& suspend);

// Whether the machine can be woken from hibernation. Asked at each prediction.
using WakeQuestion = std::function<bool()>;

// Predicts by rates of return: it learns each sleep when it ends, and weighs a wait for a resume
// from hibernation, which the strength's entry of the scoring weights says, against time asleep.
// Keeps nothing beyond its life. Not thread-safe.
class RatesPredictor : public IPredictor, public ITimeLineListener, public IConfigurationsListener {
 public:
  // Registers with both, which are not owned and must outlive it.
  RatesPredictor(IConfigurations* configuration, IHistorian* historian, WakeQuestion canWake);
  ~RatesPredictor() override;
  RatesPredictor(const RatesPredictor&) = delete;
  RatesPredictor& operator=(const RatesPredictor&) = delete;

  // One or two records: `time` with the minutes asleep before hibernation, and a time to wake with
  // the minutes asleep after it. None for an invalid time.
  std::vector<PredictionRecord> GetPredictions(const tm& time) override;
  // The first record of GetPredictions.
  std::vector<PredictionRecord> PredictHibernate(const tm& time) override;
  // The second record of GetPredictions.
  std::vector<PredictionRecord> PredictWake(const tm& time) override;
  // Rates have no slots: kUnknownProbability.
  float GetSlotProbability(int slot) override;

  void OnTimeLineEvent(const TimeLineEvent& event) override;
  // Reads the strength and the scoring weights again.
  void OnConfigurationChanged(std::string section) override;

  const RatesState& State() const { return state_; }
  void SetState(const RatesState& state);

 private:
  IConfigurations* configuration_;
  IHistorian* historian_;
  WakeQuestion canWake_;
  RatesState state_;
  ReturnRates rates_;  // of the state's factors
  int32_t weight_;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_RATES_PREDICTOR_H_
