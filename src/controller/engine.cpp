#include "controller/engine.h"

#include <utility>

#include "prediction/cyclic_probability_predictor.h"

namespace dozewell {

Engine& engine = *new Engine;

void EngineObjects::RenewPredictor() {
  KnownData known;
  if (auto* const old = dynamic_cast<CyclicProbabilityPredictor*>(predictor.get())) {
    known = old->CopyOfKnown();
  }
  // The old one goes first, because its destructor would clear the new one's registrations.
  predictor.reset();
  predictor = std::make_unique<CyclicProbabilityPredictor>(configurations.get(), historian.get(),
                                                           std::move(known));
}

}  // namespace dozewell
