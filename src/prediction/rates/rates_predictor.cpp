#include "prediction/rates/rates_predictor.h"

#include <cstddef>
#include <utility>

#include "base/wall_clock.h"
#include "prediction/tracker.h"
#include "settings/setting_names.h"

namespace dozewell {

int32_t ReadWeight(IConfigurations& configuration) {
  constexpr int32_t kWithoutEntry = 50;
  const auto weights = ReadPredictorNumbers(configuration, kScoringWeightsName);
  const int32_t strength = ReadPredictorNumber(configuration, kStrengthName, -1);
  const bool hasEntry = strength >= 0 && strength < std::ssize(weights);
  return hasEntry ? weights[static_cast<size_t>(strength)] : kWithoutEntry;
}

std::vector<PredictionRecord> RecordsOf(const RateDecision& decision, const tm& suspend) {
  std::vector<PredictionRecord> records;
  records.reserve(2);
  records.push_back({suspend, decision.hibernate});
  if (decision.second) {
    const auto [wake, hibernate] = *decision.second;
    tm wakeTime;
    if (TmFromSeconds(SecondsFromTm(suspend) + wake * kSecondsPerMinute, wakeTime)) {
      records.push_back({wakeTime, hibernate - wake});
    }
  }
  return records;
}

RatesPredictor::RatesPredictor(IConfigurations* configuration, IHistorian* historian,
                               WakeQuestion canWake)
    : configuration_(configuration),
      historian_(historian),
      canWake_(std::move(canWake)),
      rates_(state_.factors),
      weight_(ReadWeight(*configuration)) {
  historian_->RegisterListener(this);
  configuration_->RegisterListener(this);
}

RatesPredictor::~RatesPredictor() {
  historian_->UnregisterListener();
  configuration_->UnregisterListener();
}

std::vector<PredictionRecord> RatesPredictor::GetPredictions(const tm& time) {
  const int64_t suspend = SecondsFromTm(time);
  if (suspend == kInvalidTime) return {};
  return RecordsOf(DecideByRates(rates_, WishesOf(state_.learnt, weight_, canWake_()), suspend),
                   time);
}

std::vector<PredictionRecord> RatesPredictor::PredictHibernate(const tm& time) {
  std::vector<PredictionRecord> predictions = GetPredictions(time);
  if (predictions.size() > 1) predictions.pop_back();
  return predictions;
}

std::vector<PredictionRecord> RatesPredictor::PredictWake(const tm& time) {
  std::vector<PredictionRecord> predictions = GetPredictions(time);
  if (predictions.size() < 2) return {};
  return {predictions[1]};
}

float RatesPredictor::GetSlotProbability(int) { return kUnknownProbability; }

void RatesPredictor::OnTimeLineEvent(const TimeLineEvent& event) {
  if (state_.Take(event.state, SecondsFromTm(event.time))) {
    rates_ = ReturnRates(state_.factors);
  }
}

void RatesPredictor::SetState(const RatesState& state) {
  state_ = state;
  rates_ = ReturnRates(state_.factors);
}

void RatesPredictor::OnConfigurationChanged(std::string) { weight_ = ReadWeight(*configuration_); }

}  // namespace dozewell
