#include "prediction/rates/lasting_rates_predictor.h"

#include <utility>

#include "base/durable_file.h"
#include "base/file.h"
#include "prediction/history_recorder.h"
#include "prediction/rates/rates_file.h"

namespace dozewell {
namespace {

std::wstring FinishedRatesFile(const std::wstring& folder) {
  std::wstring path = PathInFolder(folder, kRatesFileName);
  FinishWriting(path);
  return path;
}

}  // namespace

LastingRatesPredictor::LastingRatesPredictor(IConfigurations* configuration, IHistorian* historian,
                                             WakeQuestion canWake, KnownData knownSlots,
                                             KnownRates knownRates)
    : LastingRatesPredictor(configuration, historian, std::move(canWake), std::move(knownSlots),
                            FinishedRatesFile(configuration->GetDataFolder()),
                            std::move(knownRates)) {}

LastingRatesPredictor::LastingRatesPredictor(IConfigurations* configuration, IHistorian* historian,
                                             WakeQuestion canWake, KnownData knownSlots,
                                             std::wstring path, KnownRates knownRates)
    : path_(std::move(path)),
      slots_(configuration, historian, std::move(knownSlots)),
      rates_(configuration, historian, std::move(canWake)) {
  if (!knownRates.state || knownRates.isOfUnreadFile) LoadAndCatchUp();
  if (knownRates.state && (!knownRates.isOfUnreadFile || isOfUnreadFile_)) {
    rates_.SetState(*knownRates.state);
  }
  slots_.EstimateWhenAsked();
  historian->RegisterListener(this);
  configuration->RegisterListener(this);
}

void LastingRatesPredictor::LoadAndCatchUp() {
  LoadedRates loaded = LoadRates(path_);
  isOfUnreadFile_ = loaded.isUnread;
  const auto state = loaded.state ? std::move(loaded.state) : std::make_unique<RatesState>();
  const int64_t newest = state->newest;
  for (const HistoryRecord& record : RecordedHistory()) {
    const TimeLineEvent event = ToTimeLineEvent(record);
    const int64_t time = SecondsFromTm(event.time);
    if (time > newest) state->Take(event.state, time);
  }
  rates_.SetState(*state);
}

std::vector<PredictionRecord> LastingRatesPredictor::GetPredictions(const tm& time) {
  return rates_.GetPredictions(time);
}

std::vector<PredictionRecord> LastingRatesPredictor::PredictHibernate(const tm& time) {
  return rates_.PredictHibernate(time);
}

std::vector<PredictionRecord> LastingRatesPredictor::PredictWake(const tm& time) {
  return rates_.PredictWake(time);
}

float LastingRatesPredictor::GetSlotProbability(int slot) {
  return slots_.GetSlotProbability(slot);
}

void LastingRatesPredictor::OnTimeLineEvent(const TimeLineEvent& event) {
  rates_.OnTimeLineEvent(event);
  if (event.state == ContainerStopped && SaveRates(rates_.State(), path_, isOfUnreadFile_)) {
    isOfUnreadFile_ = false;
  }
  slots_.OnTimeLineEvent(event);
}

void LastingRatesPredictor::OnConfigurationChanged(std::string section) {
  rates_.OnConfigurationChanged(section);
  slots_.OnConfigurationChanged(std::move(section));
}

KnownRates LastingRatesPredictor::CopyOfKnown() const {
  return {std::make_unique<RatesState>(rates_.State()), isOfUnreadFile_};
}

}  // namespace dozewell
