#include <vector>

#include "common/local_time.h"
#include "prediction/time_line.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"

namespace dozewell::replay {
namespace {

std::string Json(const std::vector<PredictionRecord>& predictions) {
  std::string json = "[";
  for (const PredictionRecord& record : predictions) {
    if (json.size() > 1) json += ",";
    json += "{\"time\":\"" + FormatLocalTime(record.time) +
            "\",\"minutes\":" + std::to_string(record.minutes) + "}";
  }
  return json + "]\n";
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
  const auto predictions = learnt.Predictor().GetPredictions(time);
  results.output = options.json ? Json(predictions) : Text(predictions);
}

}  // namespace dozewell::replay
