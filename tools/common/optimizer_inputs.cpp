#include "common/optimizer_inputs.h"

#include <limits>

#include "base/wall_clock.h"
#include "common/counted_records.h"
#include "common/duration_text.h"
#include "common/history_io.h"
#include "common/option_text.h"

namespace dozewell {
namespace {

int64_t TimeoutSeconds(const std::optional<std::string>& timeout, int64_t defaultMinutes) {
  constexpr int64_t kMostMinutes = std::numeric_limits<uint32_t>::max();
  if (!timeout) return defaultMinutes * kSecondsPerMinute;
  const auto minutes = ParseTimeout(*timeout);
  if (minutes && *minutes <= kMostMinutes) return *minutes * kSecondsPerMinute;
  throw ToolError(WrongValue("--hibernate-after", TimeoutRange(kMostMinutes), *timeout));
}

}  // namespace

std::vector<HistoryRecord> LoadOptimizerHistory(const std::string& name,
                                                std::vector<std::string>& warnings) {
  return IncreasingRecords(LoadHistory(name, warnings).bytes);
}

SimulatedHistory LoadSimulatedHistory(const std::string& name, std::vector<std::string>& warnings) {
  const History history = LoadHistory(name, warnings);
  SimulatedHistory simulated;
  for (const auto& [record, position] : CountedRecords(history.bytes)) {
    if (record.asleep >= kHistoryCodes && simulated.unknownEvent.empty()) {
      simulated.unknownEvent =
          history.Place(position) + ": " + kUnknownEvent + ": " + std::to_string(record.asleep);
    }
    simulated.records.push_back(record);
  }
  return simulated;
}

int64_t HibernateAfterSeconds(const std::optional<std::string>& timeout) {
  constexpr int64_t kAssumedMinutes = 10;
  return TimeoutSeconds(timeout, kAssumedMinutes);
}

int64_t ComparedTimeoutSeconds(const std::optional<std::string>& timeout) {
  constexpr int64_t kUsualMinutes = 180;
  return TimeoutSeconds(timeout, kUsualMinutes);
}

}  // namespace dozewell
