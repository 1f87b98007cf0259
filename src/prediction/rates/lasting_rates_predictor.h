#ifndef DOZEWELL_PREDICTION_RATES_LASTING_RATES_PREDICTOR_H_
#define DOZEWELL_PREDICTION_RATES_LASTING_RATES_PREDICTOR_H_

#include <memory>
#include <string>
#include <vector>

#include "prediction/cyclic_probability_predictor.h"
#include "prediction/rates/rates_predictor.h"

namespace dozewell {

// What a rate predictor knows, for the one that replaces it.
struct KnownRates {
  std::unique_ptr<RatesState> state;
  bool isOfUnreadFile = false;
};

// The service's rate predictor: it keeps what it knows in a file, and catches up from the history
// where the file is missing or behind. The predictor of slots goes on learning beside it. Not
// thread-safe.
class LastingRatesPredictor : public IPredictor,
                              public ITimeLineListener,
                              public IConfigurationsListener {
 public:
  // Registers with both, which are not owned and must outlive it. Throws what the constructor of
  // CyclicProbabilityPredictor throws. `knownSlots` and `knownRates` are from the predictor that
  // this one replaces; with the latter neither file nor history is read, unless the file could
  // not be read before and can be now.
  LastingRatesPredictor(IConfigurations* configuration, IHistorian* historian, WakeQuestion canWake,
                        KnownData knownSlots = {}, KnownRates knownRates = {});

  std::vector<PredictionRecord> GetPredictions(const tm& time) override;
  std::vector<PredictionRecord> PredictHibernate(const tm& time) override;
  std::vector<PredictionRecord> PredictWake(const tm& time) override;
  // The probability that the predictor of slots knows.
  float GetSlotProbability(int slot) override;

  // Learns the event, or on ContainerStopped saves. The exceptions of the predictor of slots go to
  // the caller.
  void OnTimeLineEvent(const TimeLineEvent& event) override;
  void OnConfigurationChanged(std::string section) override;

  const CyclicProbabilityPredictor& Slots() const { return slots_; }
  const RatesState& State() const { return rates_.State(); }
  KnownRates CopyOfKnown() const;

 private:
  LastingRatesPredictor(IConfigurations* configuration, IHistorian* historian, WakeQuestion canWake,
                        KnownData knownSlots, std::wstring path, KnownRates knownRates);

  // Takes the file's state, and learns what was recorded after its newest event.
  void LoadAndCatchUp();

  std::wstring path_;
  // Each registers itself, and this object takes the place of both.
  CyclicProbabilityPredictor slots_;
  RatesPredictor rates_;
  bool isOfUnreadFile_ = false;  // until it is saved
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_LASTING_RATES_PREDICTOR_H_
