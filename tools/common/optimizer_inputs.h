#ifndef DOZEWELL_COMMON_OPTIMIZER_INPUTS_H_
#define DOZEWELL_COMMON_OPTIMIZER_INPUTS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/exception.h"
#include "common/tool_error.h"
#include "optimizer/simulator/simulator.h"
#include "prediction/history_file.h"

namespace dozewell {

// The records of a history that the optimizer replays. A damaged one becomes a warning. Throws
// ToolError.
std::vector<HistoryRecord> LoadOptimizerHistory(const std::string& name,
                                                std::vector<std::string>& warnings);

// A history for simulations.
struct SimulatedHistory {
  std::vector<HistoryRecord> records;
  std::string unknownEvent;  // the error for the first unknown code, with its place; or empty
};

// The same. An unknown code is no error yet, since other errors of a simulation come before it.
SimulatedHistory LoadSimulatedHistory(const std::string& name, std::vector<std::string>& warnings);

// Does what TellPlace does, for simulations of a history.
template <typename Run, typename Place>
auto TellPlaceIn(const SimulatedHistory& history, Place place, Run run) {
  try {
    return run();
  } catch (const FixedTextException& error) {
    if (std::string_view(error.what()) == kUnknownEvent) throw ToolError(history.unknownEvent);
    throw ToolError(place() + ": " + error.what());
  }
}

// The hibernate-after timeout in seconds; without one, this is the timeout that the optimizer
// assumes when it can read none. Throws ToolError.
int64_t HibernateAfterSeconds(const std::optional<std::string>& timeout);

// The same for a comparison with what a user has, who without predictions has what Windows sets.
int64_t ComparedTimeoutSeconds(const std::optional<std::string>& timeout);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_OPTIMIZER_INPUTS_H_
