#include "controller/engine.h"

#include <utility>

#include "power/wake_possible.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/rates/lasting_rates_predictor.h"

namespace dozewell {
namespace {

// What a predictor knows, for the one that replaces it.
struct Known {
  KnownData slots;
  KnownRates rates;
};

Known CopyOfKnown(const IPredictor* predictor) {
  if (const auto* const rates = dynamic_cast<const LastingRatesPredictor*>(predictor)) {
    return {rates->Slots().CopyOfKnown(), rates->CopyOfKnown()};
  }
  if (const auto* const slots = dynamic_cast<const CyclicProbabilityPredictor*>(predictor)) {
    return {slots->CopyOfKnown(), {}};
  }
  return {};
}

}  // namespace

Engine& engine = *new Engine;

PredictorChoice EngineObjects::RenewPredictor() {
  Known known = CopyOfKnown(predictor.get());
  // The old one goes first, because its destructor would clear the new one's registrations.
  predictor.reset();
  const PredictorChoice choice = ReadPredictorChoice(*configurations);
  RatesInForce = choice.kind == PredictorKind::Rates;
  if (RatesInForce) {
    predictor =
        std::make_unique<LastingRatesPredictor>(configurations.get(), historian.get(), WakePossible,
                                                std::move(known.slots), std::move(known.rates));
  } else {
    predictor = std::make_unique<CyclicProbabilityPredictor>(configurations.get(), historian.get(),
                                                             std::move(known.slots));
  }
  return choice;
}

}  // namespace dozewell
