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
#include "replay/search_habits.h"
#include "replay/table_text.h"
#include "replay/taken_settings.h"
#include "replay/walk_text.h"
#include "walk/walk_forward.h"
#include "walk/week_samples.h"

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

Json ChoicesJson(const std::vector<Choice>& choices) {
  Json list = Json::array();
  for (const Choice& choice : choices) list.push_back(ChoiceJson(choice));
  return list;
}

std::string Table(const std::vector<Choice>& choices) {
  constexpr size_t kCellWidth = 13;
  const auto line = [](const std::string& name, const std::array<std::string, 4>& cells) {
    return AlignedLine(name, cells, kCellWidth);
  };
  std::string table = line("", {"hours", "hours", "resumes from", "resumes from"}) +
                      line("", {"asleep", "hibernated", "sleep", "hibernation"});
  for (const auto& [name, value, outcomes, minutes] : choices) {
    std::string label = name;
    if (!value.empty()) label.append(": ").append(value);
    table += line(label, {HoursText(outcomes.sleepSeconds), HoursText(outcomes.hibernateSeconds),
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
  const std::vector<HistoryRecord>& records = history.records;
  std::vector<Choice> choices;
  Walk walk;
  TellPlaceIn(history, place, [&] {
    choices = AllChoices(Compare(records, configuration, timeoutSeconds));
    walk = WalkForward(records, configuration, timeoutSeconds, HabitsOf(configuration));
  });
  const WeekSamples samples(records, walk.weeks);
  if (options.json) {
    results.output = IdentifiedLine({{"records", records.size()},
                                     {"choices", ChoicesJson(choices)},
                                     {"sleeps", walk.sleeps},
                                     {"weeks", walk.weeks},
                                     {"searches", SearchesJson(walk)},
                                     {"walkForward", WalkJson(walk, samples)}},
                                    results.identity);
  } else {
    results.output = Table(choices) + "\n" + WalkText(walk, samples, timeoutSeconds);
  }
}

}  // namespace dozewell::replay
