#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "common/comparison.h"
#include "common/hours_text.h"
#include "common/json.h"
#include "common/optimizer_inputs.h"
#include "replay/commands.h"
#include "replay/file_configurations.h"
#include "replay/outcomes_text.h"

namespace dozewell::replay {
namespace {

std::vector<Choice> AllChoices(const Comparison& comparison) {
  std::vector<Choice> choices = comparison.fixed;
  choices.push_back(comparison.settings);
  choices.insert(choices.end(), comparison.adopted.begin(), comparison.adopted.end());
  choices.push_back(comparison.clairvoyant);
  return choices;
}

std::string ChoiceJson(const Choice& choice) {
  std::string json = "{\"name\":" + JsonString(choice.name);
  if (!choice.value.empty()) json += ",\"value\":" + JsonString(choice.value);
  return json + "," + OutcomesJsonMembers(choice.outcomes) + "}";
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
  for (const auto& [name, value, outcomes] : choices) {
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
  const std::vector<HistoryRecord> records =
      LoadOptimizerHistory(options.history.value(), results.warnings);
  FileConfigurations configuration(LoadSettings(options.settings));
  const std::vector<Choice> choices =
      AllChoices(Compare(records, configuration, HibernateAfterSeconds(options.hibernateAfter)));
  results.output = options.json ? "{\"records\":" + std::to_string(records.size()) +
                                      ",\"choices\":" + JsonList(choices, ChoiceJson) + "}\n"
                                : Table(choices);
}

}  // namespace dozewell::replay
