#ifndef DOZEWELL_REPLAY_LEARNT_DATA_H_
#define DOZEWELL_REPLAY_LEARNT_DATA_H_

#include <optional>
#include <string>
#include <vector>

#include "common/tracker_file.h"
#include "prediction/cycle_shape.h"
#include "replay/command.h"
#include "replay/file_configurations.h"

namespace dozewell::replay {

// The service's tracker on the data file and the settings that the user named.
class LearntData {
 public:
  // Throws ToolError when a file is missing or the tracker cannot be built with them. A data file
  // that the tracker ignored is a warning, and so is a setting that disables predictions.
  LearntData(const Options& options, Results& results);

  ArbitraryCycleProbabilityTracker& Tracker() { return loaded_.tracker; }
  FileConfigurations& Configuration() { return configuration_; }
  // The service asks for no prediction then.
  bool IsPredictionDisabled() { return configuration_.IsPredictionDisabled(); }
  CycleShape Shape() { return ReadCycleShape(configuration_); }

  // The time that an option gives, or without the option, that of the last event learnt. Throws
  // ToolError for a text that is no time, and when there was no event.
  tm TimeOrLastEvent(const char* option, const std::optional<std::string>& text);

 private:
  std::string name_;
  FileConfigurations configuration_;
  std::vector<unsigned char> content_;
  LoadedTracker loaded_;
};

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_LEARNT_DATA_H_
