#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "common/json.h"
#include "optimizer/best_set.h"
#include "optimizer/parameter_grid.h"
#include "optimizer/parameter_ranges.h"
#include "optimizer/parameter_search.h"
#include "optimizer/simulator.h"
#include "replay/clairvoyant.h"
#include "replay/commands.h"
#include "replay/file_configurations.h"
#include "replay/optimizer_inputs.h"

namespace dozewell {
namespace {

using Records = std::span<const HistoryRecord>;

constexpr int64_t kComparedMinutes[] = {10, 30, 60, 180};

// One way to spend the sleeps of a history.
struct Choice {
  std::string name;
  std::string value;  // the text of an adopted set; empty for every other choice
  Outcomes outcomes;
};

Outcomes OutcomesOf(const SimTimeLine& timeLine) {
  Outcomes outcomes;
  CountOutcomes(timeLine, outcomes);
  return outcomes;
}

ParameterSet SetOf(const BestSetApplication& application) {
  const auto& [firstLast, secondLast, agregation, high, low, dayGrouping] =
      application.parameters.value();
  return {{high, low}, {firstLast, secondLast, agregation}, dayGrouping};
}

// What the service does once the set is the chosen one.
Outcomes Adopted(const BestSet& best, Records records, const Outcomes& baseline,
                 const Outcomes& unchanged) {
  const BestSetApplication application = ReadBestSet(best.value);
  if (application.disabled != 0) return baseline;
  if (!application.parameters) return unchanged;
  NativeSimulatorConfigurations parameters = ConfigurationsOf(SetOf(application));
  return OutcomesOf(SimulatePredictor(parameters, records));
}

std::vector<Choice> Compare(Records records, IConfigurations& configuration,
                            int64_t hibernateAfterSeconds) {
  std::vector<Choice> choices;
  for (const int64_t minutes : kComparedMinutes) {
    choices.push_back({std::to_string(minutes) + " minutes", "",
                       OutcomesOf(SimulateFixedTimeout(records, minutes * 60))});
  }
  choices.push_back({"never", "", OutcomesOf(SimulateFixedTimeout(records, 0))});

  NativeSimulatorConfigurations given = SimulatedParameters(configuration);
  const Outcomes unchanged = OutcomesOf(SimulatePredictor(given, records));
  choices.push_back({"settings", "", unchanged});

  const Outcomes baseline = OutcomesOf(SimulateFixedTimeout(records, hibernateAfterSeconds));
  const auto results =
      SearchParameters(records, baseline, BuildParameterGrid(ReadParameterRanges(configuration)),
                       ReadPredictorNumbers(configuration, "WR"));
  for (const BestSet& best : results.value()) {
    choices.push_back({best.name, best.value, Adopted(best, records, baseline, unchanged)});
  }
  choices.push_back({"clairvoyant", "", OutcomesOf(SimulateClairvoyant(records))});
  return choices;
}

std::string ChoiceJson(const Choice& choice) {
  std::string json = "{\"name\":" + JsonString(choice.name);
  if (!choice.value.empty()) json += ",\"value\":" + JsonString(choice.value);
  const Outcomes& outcomes = choice.outcomes;
  return json + ",\"sleepSeconds\":" + std::to_string(outcomes.sleepSeconds) +
         ",\"hibernateSeconds\":" + std::to_string(outcomes.hibernateSeconds) +
         ",\"resumesFromSleep\":" + std::to_string(outcomes.resumesFromSleep) +
         ",\"resumesFromHibernate\":" + std::to_string(outcomes.resumesFromHibernate) + "}";
}

std::string PaddedRight(std::string text, size_t width) {
  text.resize(std::max(text.size(), width), ' ');
  return text;
}

std::string PaddedLeft(const std::string& text, size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string HoursText(int64_t seconds) {
  constexpr double kSecondsPerHour = 3600;
  char text[64];
  std::snprintf(text, std::size(text), "%.1f", static_cast<double>(seconds) / kSecondsPerHour);
  return text;
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
  const std::vector<HistoryRecord> records = LoadOptimizerHistory(options.history.value());
  FileConfigurations configuration(LoadSettings(options.settings));
  const std::vector<Choice> choices =
      Compare(records, configuration, HibernateAfterSeconds(options.hibernateAfter));
  results.output = options.json ? "{\"records\":" + std::to_string(records.size()) +
                                      ",\"choices\":" + JsonList(choices, ChoiceJson) + "}\n"
                                : Table(choices);
}

}  // namespace dozewell
