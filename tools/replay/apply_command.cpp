#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "common/input_file.h"
#include "optimizer/best_set.h"
#include "replay/best_set_json.h"
#include "replay/commands.h"
#include "settings/setting_names.h"

namespace dozewell::replay {
namespace {

// The file's text, without the line feed that a value of the registry would not have.
std::string ChosenText(const std::string& fileName) {
  const auto content = ReadInputIfExists(fileName);
  if (!content) return "";
  std::string text(AsText(*content));
  if (text.ends_with('\n')) text.pop_back();
  return text;
}

Json ApplicationJson(const BestSetApplication& application) {
  Json json = {{"disabled", application.disabled}, {"feedback", application.feedback}};
  for (size_t i = 0; i < kBestSetParameters.size(); ++i) {
    json[kBestSetParameters[i]] =
        application.parameters ? Json(std::to_string((*application.parameters)[i])) : Json();
  }
  json["set"] = SetJson(application);
  return json;
}

const char* Verdict(const BestSetApplication& application) {
  if (application.disabled != 0) return "no better than the timeout, so there are no predictions";
  return application.parameters ? "taken" : "no set, so the parameters stay as they are";
}

// What the service would store, in its order and in the form of a settings file.
std::string Text(const std::string& strength, const BestSetApplication& application) {
  std::string text = kBestSetPrefix + strength + ": " + Verdict(application) + '\n';
  if (application.parameters) {
    for (size_t i = 0; i < kBestSetParameters.size(); ++i) {
      text += std::string(kBestSetParameters[i]) + '=' +
              std::to_string((*application.parameters)[i]) + '\n';
    }
  }
  return text + NarrowToUtf8(kDisablePredictionName) + '=' + std::to_string(application.disabled) +
         '\n' + NarrowToUtf8(kServiceFeedbackName) + '=' + std::to_string(application.feedback) +
         '\n';
}

}  // namespace

void RunApply(const Options& options, Results& results) {
  const BestSetApplication application = ReadBestSet(ChosenText(options.best.value()));
  results.output = options.json ? IdentifiedLine(ApplicationJson(application), results.identity)
                                : Text(options.strength.value(), application);
}

}  // namespace dozewell::replay
