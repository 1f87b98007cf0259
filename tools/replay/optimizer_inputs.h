#ifndef DOZEWELL_REPLAY_OPTIMIZER_INPUTS_H_
#define DOZEWELL_REPLAY_OPTIMIZER_INPUTS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "optimizer/native_simulator_configurations.h"
#include "prediction/configurations.h"
#include "prediction/history_file.h"

namespace dozewell {

// The records of a history that the optimizer replays. Throws ReplayError.
std::vector<HistoryRecord> LoadOptimizerHistory(const std::string& name);

// The parameters of a configuration as a candidate of the simulator.
NativeSimulatorConfigurations SimulatedParameters(IConfigurations& configuration);

// The seconds of the hibernate-after timeout that was given in minutes, or of the one that the
// optimizer takes where it can read none. Throws ReplayError.
int64_t HibernateAfterSeconds(const std::optional<std::string>& minutes);

}  // namespace dozewell

#endif  // DOZEWELL_REPLAY_OPTIMIZER_INPUTS_H_
