#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "common/comparison.h"
#include "common/hours_text.h"
#include "common/optimizer_inputs.h"
#include "common/problem_place.h"
#include "common/simulated_parameters.h"
#include "replay/best_set_json.h"
#include "replay/commands.h"
#include "replay/outcomes_text.h"
#include "replay/taken_settings.h"

namespace dozewell::replay {
namespace {

std::vector<Choice> AllChoices(const Comparison& comparison) {
  std::vector<Choice> choices = comparison.fixed;
  choices.push_back(comparison.settings);
  choices.insert(choices.end(), comparison.adopted.begin(), comparison.adopted.end());
  choices.push_back(comparison.clairvoyant);
  return choices;
}

Json ChoiceJson(const Choice& choice) {
  Json json = {{"name", choice.name},
               {"value", choice.value.empty() ? Json() : Json(choice.value)}};
  json.update(OutcomesJson(choice.outcomes));
  json["hibernateAfterMinutes"] = OptionalJson(choice.hibernateAfterMinutes);
  json["set"] = SetJson(ReadBestSet(choice.value));
  return json;
}

Json ComparisonJson(size_t records, const std::vector<Choice>& choices) {
  Json list = Json::array();
  for (const Choice& choice : choices) list.push_back(ChoiceJson(choice));
  return {{"records", records}, {"choices", list}};
}

std::string PaddedRight(std::string text, size_t width) {
  text.resize(std::max(text.size(), width), ' ');
  return text;
}

std::string PaddedLeft(const std::string& text, size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string TableLine(const std::string& name, const std::array<std::string, 4>& cells) {
  constexpr size_t kNameWidth = 28;
  constexpr size_t kCellWidth = 13;
  std::string line = PaddedRight(name, kNameWidth);
  for (const std::string& cell : cells) line += PaddedLeft(cell, kCellWidth);
  return line + '\n';
}

std::string Table(const std::vector<Choice>& choices) {
  std::string table = TableLine("", {"hours", "hours", "resumes from", "resumes from"}) +
                      TableLine("", {"asleep", "hibernated", "sleep", "hibernation"});
  for (const auto& [name, value, outcomes, minutes] : choices) {
    std::string label = name;
    if (!value.empty()) label.append(": ").append(value);
    table +=
        TableLine(label, {HoursText(outcomes.sleepSeconds), HoursText(outcomes.hibernateSeconds),
                          std::to_string(outcomes.resumesFromSleep),
                          std::to_string(outcomes.resumesFromHibernate)});
  }
  return table;
}

}  // namespace

void RunCompare(const Options& options, Results& results) {
  const auto history = LoadSimulatedHistory(options.history.value(), results.warnings);
  results.identity.time = TimeOfLast(history.records);
  FileConfigurations configuration = TakeSettings(options, results);
  const int64_t timeoutSeconds = HibernateAfterSeconds(options.hibernateAfter);
  NativeSimulatorConfigurations parameters = SimulatedParameters(configuration);
  const auto place = [&] {
    const std::string& settings = configuration.Name();
    const std::string search = PlaceOfSearchProblem(configuration, {settings, *options.history});
    return PlaceOfProblem(parameters, {settings, search});
  };
  const std::vector<Choice> choices = AllChoices(TellPlaceIn(
      history, place, [&] { return Compare(history.records, configuration, timeoutSeconds); }));
  results.output = options.json ? IdentifiedLine(ComparisonJson(history.records.size(), choices),
                                                 results.identity)
                                : Table(choices);
}

}  // namespace dozewell::replay
