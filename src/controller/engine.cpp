#include "controller/engine.h"

#include "prediction/cyclic_probability_predictor.h"

namespace dozewell {

Engine& engine = *new Engine;

void Engine::RenewPredictor() {
  // First the old one goes: its end would take the new one's registrations away.
  predictor.reset();
  predictor = std::make_unique<CyclicProbabilityPredictor>(configurations.get(), historian.get());
}

}  // namespace dozewell
