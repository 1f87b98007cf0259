// Learns from a history file of any content and merges its records with pending ones; tells whether
// it is a history, and whether it is damaged.

#include <cstring>
#include <exception>
#include <string>
#include <vector>

#include "common/file_kind.h"
#include "common/history_io.h"
#include "common/tool_error.h"
#include "fakes/configurations_fake.h"
#include "fuzz/input.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/history_file.h"

namespace dozewell {
namespace {

void RequireIncreasing(const std::vector<HistoryRecord>& records) {
  for (size_t i = 1; i < records.size(); ++i) {
    fuzz::Require(records[i].time > records[i - 1].time);
  }
}

void Recognize(const std::vector<unsigned char>& file) {
  std::vector<std::string> warnings;
  try {
    DatHistory("history", file, warnings);
    const size_t counted = IncreasingRecords(file).size() * sizeof(HistoryRecord);
    fuzz::Require(!warnings.empty() || counted == file.size());
    RequireDataFile("data", file);
    RequireCsv("csv", file);
  } catch (const ToolError&) {
    // A file of another kind is refused.
  }
}

void Learn(const std::vector<HistoryRecord>& records) {
  fakes::Configurations configuration;
  configuration.values["MinutesInDay"] = "60";
  configuration.values["DayGrouping"] = "12";
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  for (const HistoryRecord& record : records) {
    try {
      tracker.ProcessEvent(ToTimeLineEvent(record));
    } catch (const std::exception&) {
      // After a refused event everything must still work.
    }
    tracker.GetPredictions(ToTimeLineEvent(record).time);
  }
}

void Run(fuzz::Input input) {
  const auto now = input.Take<int64_t>();
  const auto limitDays = input.Take<uint32_t>();
  const size_t fileSize = input.Take<uint16_t>() % 1024;
  const auto fileBytes = input.TakeBytes(fileSize);
  const std::vector<unsigned char> file(fileBytes.begin(), fileBytes.end());
  const std::vector<HistoryRecord> pending = WholeRecords(input.TakeRest());

  const auto merged = MergeHistory(&file, pending, HistoryCutoff(now, limitDays));
  RequireIncreasing(merged);
  fuzz::Require(merged.size() <= file.size() / sizeof(HistoryRecord) + 1 + pending.size());
  const auto counted = IncreasingRecords(file);
  RequireIncreasing(counted);
  Recognize(file);
  Learn(counted);
  Learn(merged);
}

}  // namespace
}  // namespace dozewell

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  dozewell::Run({data, size});
  return 0;
}
