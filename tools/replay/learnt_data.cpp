#include "replay/learnt_data.h"

#include <cstring>
#include <vector>

#include "base/durable_file.h"
#include "base/file.h"
#include "common/file_kind.h"
#include "common/input_file.h"
#include "common/option_text.h"
#include "common/problem_place.h"
#include "common/tool_error.h"
#include "common/tracker_file.h"

namespace dozewell::replay {
namespace {

std::optional<TrackerData> ReadHeader(const std::string& name) {
  // The predictor, which reads the file too, takes the newest content.
  const auto bytes = ReadInput(PathToSystem(PathOfNewest(PathFromSystem(name))));
  RequireDataFile(name, bytes);
  TrackerData header;
  if (bytes.size() < sizeof(header)) return std::nullopt;
  std::memcpy(&header, bytes.data(), sizeof(header));
  return header;
}

}  // namespace

LearntData::LearntData(const Options& options, Results& results)
    : name_(options.data.value()),
      configuration_(LoadSettings(options.settings), results.missingSettings),
      header_(ReadHeader(name_)),
      predictor_(TellPlace(
          [this] {
            return PlaceOfProblem(configuration_, {configuration_.Name(), name_});
          },
          [this] {
            return CyclicProbabilityPredictor(&configuration_, &historian_, PathFromSystem(name_));
          })) {
  if (const char* why = WhyIgnored(predictor_.LoadState())) {
    results.warnings.push_back(name_ + ": ignored: " + why);
    header_.reset();
  }
  if (IsPredictionDisabled()) {
    results.warnings.push_back(configuration_.Name() +
                               ": DisablePrediction is 1, so the service acts on no prediction");
  }
}

ArbitraryCycleProbabilityTracker LearntData::Tracker() {
  return LoadTracker(configuration_, PathFromSystem(name_)).tracker;
}

tm LearntData::TimeOrLastEvent(const char* option, const std::optional<std::string>& text) const {
  if (text) return ParseTimeOption(option, *text);
  tm time;
  if (!header_ || !TmFromSeconds(SecondsFromTm(header_->lastTime), time)) {
    throw ToolError(name_ + ": holds no event whose time could be taken; give " + option);
  }
  return time;
}

}  // namespace dozewell::replay
