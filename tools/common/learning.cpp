#include "common/learning.h"

#include <exception>

#include "common/counted_records.h"
#include "common/float_text.h"
#include "common/local_time.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "prediction/tracker_data.h"
#include "settings/setting_names.h"

namespace dozewell {
namespace {

constexpr size_t kMostReports = 10;

std::string TimeText(const HistoryRecord& record, const TimeLineEvent& event) {
  const bool converted = event.time.tm_year != kNone;
  return converted ? FormatLocalTime(event.time) : DoubleText(record.time) + " seconds";
}

}  // namespace

Learning::Learning(const History& history, IConfigurations& configuration, const std::string& data,
                   std::vector<std::string>& warnings)
    : data_(data) {
  HistorianImpl historian;
  // Nothing is at that path yet, so the predictor begins with nothing learnt.
  const CyclicProbabilityPredictor predictor(&configuration, &historian, data_.TemporaryPath());
  Feed(history, historian, warnings);
  const TrackerDataPtr learnt = predictor.CopyOfKnown().data;
  data_.Prepare(learnt.get(), static_cast<size_t>(TrackerDataSize(learnt->slotCount)));
}

void Learning::Feed(const History& history, HistorianImpl& historian,
                    std::vector<std::string>& warnings) {
  records_ = WholeRecords(history.bytes).size();
  for (const auto& [record, position] : CountedRecords(history.bytes)) {
    ++inOrder_;
    const TimeLineEvent event = ToTimeLineEvent(record);
    try {
      historian.NotifyListener(event);
    } catch (const std::exception& refusal) {
      if (++refused_ > kMostReports) continue;
      warnings.push_back(history.Place(position) + ", " + TimeText(record, event) +
                         ": event refused: " + refusal.what());
    }
  }
  if (refused_ > kMostReports) {
    warnings.push_back(history.name + ": " + std::to_string(refused_ - kMostReports) +
                       " more events refused");
  }
}

}  // namespace dozewell
