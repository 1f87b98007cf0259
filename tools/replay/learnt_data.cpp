#include "replay/learnt_data.h"

#include <vector>

#include "common/file_kind.h"
#include "common/input_file.h"
#include "common/option_text.h"
#include "common/problem_place.h"
#include "common/service_file.h"
#include "common/tool_error.h"
#include "replay/taken_settings.h"

namespace dozewell::replay {
namespace {

std::vector<unsigned char> ReadDataFile(const std::string& name) {
  auto content = ReadInput(NameThatCounts(name));
  RequireDataFile(name, content);
  return content;
}

}  // namespace

LearntData::LearntData(const Options& options, Results& results)
    : name_(options.data.value()),
      configuration_(TakeSettings(options, results)),
      content_(ReadDataFile(name_)),
      loaded_(TellPlace(
          [this] {
            return PlaceOfProblem(configuration_, {configuration_.Name(), name_});
          },
          [this] { return LoadTracker(configuration_, content_); })) {
  results.identity.time = TimeOfLast(*loaded_.tracker.GetData());
  if (const char* why = WhyIgnored(loaded_.state)) {
    results.warnings.push_back(name_ + ": ignored: " + why);
  }
  if (IsPredictionDisabled()) {
    results.warnings.push_back(configuration_.Name() +
                               ": DisablePrediction is 1, so the service acts on no prediction");
  }
}

tm LearntData::TimeOrLastEvent(const char* option, const std::optional<std::string>& text) {
  if (text) return ParseTimeOption(option, *text);
  tm time;
  if (!TmFromSeconds(SecondsFromTm(loaded_.tracker.GetData()->lastTime), time)) {
    throw ToolError(name_ + ": holds no event whose time could be taken; give " + option);
  }
  return time;
}

}  // namespace dozewell::replay
