#include <vector>

#include "common/json.h"
#include "common/local_time.h"
#include "prediction/time_line.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"

namespace dozewell::replay {
namespace {

Json PredictionsJson(const std::vector<PredictionRecord>& predictions) {
  Json list = Json::array();
  for (const PredictionRecord& record : predictions)
    list.push_back({{"time", FormatLocalTime(record.time)}, {"minutes", record.minutes}});
  return list;
}

std::string NextIdleText(const PredictionRecord& record) {
  if (record.minutes == kNoPrediction) return "no idle stretch expected";
  return "next idle stretch in " + std::to_string(record.minutes) + " minutes";
}

std::string Text(const std::vector<PredictionRecord>& predictions) {
  std::string text;
  for (const PredictionRecord& record : predictions) {
    const char* what = text.empty() ? ": " : ": expected back in use; then ";
    text += FormatLocalTime(record.time) + what + NextIdleText(record) + "\n";
  }
  return text;
}

}  // namespace

void RunPredict(const Options& options, Results& results) {
  LearntData learnt(options, results);
  const tm time = learnt.TimeOrLastEvent("--at", options.at);
  const auto predictions = learnt.Tracker().GetPredictions(time);
  results.output = options.json ? IdentifiedLine(PredictionsJson(predictions), results.identity)
                                : Text(predictions);
}

}  // namespace dozewell::replay
