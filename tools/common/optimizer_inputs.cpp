#include "common/optimizer_inputs.h"

#include <limits>

#include "common/counted_records.h"
#include "common/duration_text.h"
#include "common/history_io.h"
#include "common/option_text.h"
#include "optimizer/simulator/simulator.h"

namespace dozewell {

std::vector<HistoryRecord> LoadOptimizerHistory(const std::string& name,
                                                std::vector<std::string>& warnings) {
  return IncreasingRecords(LoadHistory(name, warnings).bytes);
}

std::vector<HistoryRecord> LoadSimulatedHistory(const std::string& name,
                                                std::vector<std::string>& warnings) {
  const History history = LoadHistory(name, warnings);
  const std::vector<CountedRecord> counted = CountedRecords(history.bytes);
  std::vector<HistoryRecord> records;
  for (const auto& [record, position] : counted) {
    // A history that is too short is not looked at.
    if (record.asleep >= kHistoryCodes && counted.size() >= kFewestSimulatedRecords) {
      throw ToolError(history.Place(position) +
                      ": Unknown event in the history: " + std::to_string(record.asleep));
    }
    records.push_back(record);
  }
  return records;
}

int64_t HibernateAfterSeconds(const std::optional<std::string>& timeout) {
  constexpr int64_t kDefaultMinutes = 10;
  constexpr int64_t kSecondsPerMinute = 60;
  constexpr int64_t kMostMinutes = std::numeric_limits<uint32_t>::max();
  if (!timeout) return kDefaultMinutes * kSecondsPerMinute;
  const auto minutes = ParseTimeout(*timeout);
  if (minutes && *minutes <= kMostMinutes) return *minutes * kSecondsPerMinute;
  throw ToolError(WrongValue("--hibernate-after", TimeoutRange(kMostMinutes), *timeout));
}

}  // namespace dozewell
