#include "prediction/cyclic_probability_predictor.h"

#include <utility>

#include "base/durable_file.h"
#include "base/file.h"

namespace dozewell {

namespace {

std::wstring FinishedDataFile(const std::wstring& folder) {
  std::wstring path = PathInFolder(folder, kDataFileName);
  FinishWriting(path);
  return path;
}

}  // namespace

CyclicProbabilityPredictor::CyclicProbabilityPredictor(IConfigurations* configuration,
                                                       IHistorian* historian, KnownData known)
    : CyclicProbabilityPredictor(configuration, historian,
                                 FinishedDataFile(configuration->GetDataFolder()),
                                 std::move(known)) {}

CyclicProbabilityPredictor::CyclicProbabilityPredictor(IConfigurations* configuration,
                                                       IHistorian* historian,
                                                       std::wstring dataFilePath, KnownData known)
    : configuration_(configuration), historian_(historian), dataFilePath_(std::move(dataFilePath)) {
  LoadedData loaded = LoadNewestData(*configuration_, dataFilePath_, std::move(known));
  loadState_ = loaded.state;
  isOfUnreadFile_ = loadState_ == DataFileState::NotRead;
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
    Save();
  } else {
    tracker_->ProcessEvent(event);
  }
}

void CyclicProbabilityPredictor::Save() {
  isSaved_ = SaveData(*tracker_->GetData(), dataFilePath_, isOfUnreadFile_);
  if (isSaved_) isOfUnreadFile_ = false;
}

KnownData CyclicProbabilityPredictor::CopyOfKnown() const {
  return {CopyOf(*tracker_->GetData()), isSaved_, isOfUnreadFile_};
}

void CyclicProbabilityPredictor::OnConfigurationChanged(std::string section) {
  tracker_->ReloadParameters(std::move(section));
}

}  // namespace dozewell
