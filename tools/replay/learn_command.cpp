#include <bit>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <vector>

#include "common/float_text.h"
#include "common/local_time.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/historian.h"
#include "prediction/history_file.h"
#include "prediction/tracker_data.h"
#include "replay/commands.h"
#include "replay/file_configurations.h"
#include "replay/history_io.h"
#include "replay/learnt_data.h"
#include "replay/output_file.h"

namespace dozewell {
namespace {

constexpr size_t kMostReports = 10;

struct Counts {
  size_t records = 0;
  size_t inOrder = 0;
  size_t refused = 0;
};

std::string TimeText(const HistoryRecord& record, const TimeLineEvent& event) {
  const bool converted = event.time.tm_year != kNone;
  return converted ? FormatLocalTime(event.time) : DoubleText(record.time) + " seconds";
}

// To the last bit, so that not-a-number is the same as itself.
bool IsSameTime(const HistoryRecord& a, const HistoryRecord& b) {
  return std::bit_cast<uint64_t>(a.time) == std::bit_cast<uint64_t>(b.time);
}

Counts Feed(const History& history, HistorianImpl& historian, Results& results) {
  const auto records = WholeRecords(history.bytes);
  Counts counts;
  counts.records = records.size();
  size_t position = 0;
  for (const HistoryRecord& record : IncreasingRecords(history.bytes)) {
    // One that counts is later than all that were passed over before it.
    while (!IsSameTime(records[position], record)) ++position;
    ++counts.inOrder;
    const TimeLineEvent event = ToTimeLineEvent(record);
    try {
      historian.NotifyListener(event);
    } catch (const std::exception& refusal) {
      if (++counts.refused > kMostReports) continue;
      results.warnings.push_back(history.Place(position) + ", " + TimeText(record, event) +
                                 ": event refused: " + refusal.what());
    }
  }
  if (counts.refused > kMostReports) {
    results.warnings.push_back(history.name + ": " + std::to_string(counts.refused - kMostReports) +
                               " more events refused");
  }
  return counts;
}

}  // namespace

void RunLearn(const Options& options, Results& results) {
  const History history = LoadHistory(options.history.value());
  FileConfigurations configuration(LoadSettings(options.settings));
  OutputFile data(options.data.value());
  HistorianImpl historian;
  // Nothing is at that path yet, so there is nothing that the predictor could go on from.
  const CyclicProbabilityPredictor predictor(&configuration, &historian, data.TemporaryPath());

  const Counts counts = Feed(history, historian, results);
  historian.NotifyListener({{}, ContainerStopped});
  const int32_t slotCount = ConfiguredShape(configuration).SlotCount();
  data.Commit(static_cast<size_t>(TrackerDataSize(slotCount)));

  const std::string records = std::to_string(counts.records);
  const std::string inOrder = std::to_string(counts.inOrder);
  const std::string refused = std::to_string(counts.refused);
  results.output = options.json ? "{\"records\":" + records + ",\"inOrder\":" + inOrder +
                                      ",\"refused\":" + refused + "}\n"
                                : *options.data + ": learnt from " + records + " records, " +
                                      inOrder + " in order, " + refused + " refused\n";
}

}  // namespace dozewell
