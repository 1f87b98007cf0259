#include "controller/engine.h"

#include "prediction/cyclic_probability_predictor.h"

namespace dozewell {

Engine& engine = *new Engine;

void Engine::RenewPredictor() {
  // The old one goes first, because its destructor would clear the new one's registrations.
  predictor.reset();
  predictor = std::make_unique<CyclicProbabilityPredictor>(configurations.get(), historian.get());
}

}  // namespace dozewell
