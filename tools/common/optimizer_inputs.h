#ifndef DOZEWELL_COMMON_OPTIMIZER_INPUTS_H_
#define DOZEWELL_COMMON_OPTIMIZER_INPUTS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "prediction/history_file.h"

namespace dozewell {

// The records of a history that the optimizer replays. A damaged one becomes a warning. Throws
// ToolError.
std::vector<HistoryRecord> LoadOptimizerHistory(const std::string& name,
                                                std::vector<std::string>& warnings);

// The same. Throws ToolError with its place also for a record with a code that no simulation knows.
std::vector<HistoryRecord> LoadSimulatedHistory(const std::string& name,
                                                std::vector<std::string>& warnings);

// The hibernate-after timeout in seconds; without one, this is the timeout that the optimizer
// assumes when it can read none. Throws ToolError.
int64_t HibernateAfterSeconds(const std::optional<std::string>& timeout);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_OPTIMIZER_INPUTS_H_
