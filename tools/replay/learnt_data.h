#ifndef DOZEWELL_REPLAY_LEARNT_DATA_H_
#define DOZEWELL_REPLAY_LEARNT_DATA_H_

#include <optional>
#include <string>

#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/cycle_shape.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/historian.h"
#include "replay/command.h"
#include "replay/file_configurations.h"

namespace dozewell::replay {

// The service's predictor on the data file and the settings that the user named.
class LearntData {
 public:
  // Throws ToolError when a file is missing or the predictor cannot be built with them. A data file
  // that the predictor ignored is a warning, and so is a setting that disables predictions.
  LearntData(const Options& options, Results& results);

  CyclicProbabilityPredictor& Predictor() { return predictor_; }
  // A tracker of its own on the same data, for what the predictor does not show.
  ArbitraryCycleProbabilityTracker Tracker();
  IConfigurations& Configuration() { return configuration_; }
  // The service asks for no prediction then.
  bool IsPredictionDisabled() { return configuration_.IsPredictionDisabled(); }
  CycleShape Shape() { return ReadCycleShape(configuration_); }

  // The time that an option gives, or without the option, that of the last event learnt. Throws
  // ToolError for a text that is no time, and when there was no event.
  tm TimeOrLastEvent(const char* option, const std::optional<std::string>& text) const;

 private:
  std::string name_;
  FileConfigurations configuration_;
  HistorianImpl historian_;
  std::optional<TrackerData> header_;  // nothing if the file is too short or was ignored
  CyclicProbabilityPredictor predictor_;
};

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_LEARNT_DATA_H_
