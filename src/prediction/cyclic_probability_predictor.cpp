#include "prediction/cyclic_probability_predictor.h"

#include <utility>

#include "base/file.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"

namespace dozewell {

CyclicProbabilityPredictor::CyclicProbabilityPredictor(IConfigurations* configuration,
                                                       IHistorian* historian)
    : CyclicProbabilityPredictor(configuration, historian,
                                 PathInFolder(configuration->GetDataFolder(), kDataFileName)) {}

CyclicProbabilityPredictor::CyclicProbabilityPredictor(IConfigurations* configuration,
                                                       IHistorian* historian,
                                                       std::wstring dataFilePath)
    : configuration_(configuration), historian_(historian), dataFilePath_(std::move(dataFilePath)) {
  LoadedData loaded = LoadDataIfExists(*configuration_, dataFilePath_);
  loadState_ = loaded.state;
  if (loaded.data) {
    tracker_ =
        std::make_unique<ArbitraryCycleProbabilityTracker>(configuration_, std::move(loaded.data));
  } else {
    tracker_ = std::make_unique<ArbitraryCycleProbabilityTracker>(configuration_);
  }
  historian_->RegisterListener(this);
  configuration_->RegisterListener(this);
}

CyclicProbabilityPredictor::~CyclicProbabilityPredictor() {
  tracker_.reset();
  historian_->UnregisterListener();
  configuration_->UnregisterListener();
}

std::vector<PredictionRecord> CyclicProbabilityPredictor::GetPredictions(const tm& time) {
  return tracker_->GetPredictions(time);
}

std::vector<PredictionRecord> CyclicProbabilityPredictor::PredictHibernate(const tm& time) {
  return tracker_->PredictHibernate(time);
}

std::vector<PredictionRecord> CyclicProbabilityPredictor::PredictWake(const tm& time) {
  return tracker_->PredictWake(time);
}

float CyclicProbabilityPredictor::GetSlotProbability(int slot) {
  return tracker_->GetSlotProbability(slot);
}

void CyclicProbabilityPredictor::OnTimeLineEvent(const TimeLineEvent& event) {
  if (event.state == ContainerStopped) {
    SaveData(*tracker_->GetData(), dataFilePath_);
  } else {
    tracker_->ProcessEvent(event);
  }
}

void CyclicProbabilityPredictor::OnConfigurationChanged(std::string section) {
  tracker_->ReloadParameters(std::move(section));
}

}  // namespace dozewell
