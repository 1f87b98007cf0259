#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/wall_clock.h"
#include "common/float_text.h"
#include "common/optimizer_inputs.h"
#include "common/problem_place.h"
#include "optimizer/best_set.h"
#include "optimizer/parameter_ranges.h"
#include "optimizer/parameter_search.h"
#include "optimizer/simulator/simulator.h"
#include "replay/best_set_json.h"
#include "replay/commands.h"
#include "replay/outcomes_text.h"
#include "replay/progress_bar.h"
#include "replay/taken_settings.h"
#include "settings/setting_names.h"

namespace dozewell::replay {
namespace {

struct Search {
  size_t records;
  ParameterGrid grid;
  std::vector<int32_t> weights;
  int64_t timeoutSeconds;
  Outcomes baseline;
  std::vector<Outcomes> outcomes;  // of each set in the order of the grid, if they are asked for
  std::vector<BestSet> best;       // by weight
};

Search RunOn(const Options& options, Results& results) {
  const auto history = LoadSimulatedHistory(options.history.value(), results.warnings);
  results.identity.time = TimeOfLast(history.records);
  FileConfigurations configuration = TakeSettings(options, results);
  Search search = {};
  search.records = history.records.size();
  search.timeoutSeconds = HibernateAfterSeconds(options.hibernateAfter);
  const auto place = [&] {
    return PlaceOfSearchProblem(configuration, {configuration.Name(), *options.history});
  };
  const auto baseline = [&] {
    return SimulateFixedTimeout(history.records, search.timeoutSeconds);
  };
  CountOutcomes(TellPlaceIn(history, place, baseline), search.baseline);
  search.grid = BuildParameterGrid(ReadParameterRanges(configuration));
  search.weights = ReadPredictorNumbers(configuration, kScoringWeightsName);
  if (options.each) search.outcomes.resize(search.grid.Size());
  ProgressBar progress(search.grid.Size(), options.progress);
  const SetVisitor visit = [&](uint64_t position, const Outcomes& outcomes) {
    if (options.each) search.outcomes[position] = outcomes;
    progress.Step();
  };
  search.best = TellPlaceIn(history, place, [&] {
    // Nobody requests a stop here, so there is a result.
    return SearchParameters(history.records, search.baseline, search.grid, search.weights, visit)
        .value();
  });
  return search;
}

std::string CsvLine(const ParameterSet& set, const Outcomes& outcomes) {
  NativeSimulatorConfigurations texts = ConfigurationsOf(set);
  return BestSetText(texts) + ',' + std::to_string(outcomes.sleepSeconds) + ',' +
         std::to_string(outcomes.hibernateSeconds) + ',' +
         std::to_string(outcomes.resumesFromSleep) + ',' +
         std::to_string(outcomes.resumesFromHibernate) + '\n';
}

std::string EachSet(const Search& search) {
  std::string lines;
  for (size_t position = 0; position < search.outcomes.size(); ++position) {
    lines += CsvLine(search.grid.SetAt(position), search.outcomes[position]);
  }
  return lines;
}

// The columns of the CSV.
Json EachSetJson(const Search& search) {
  Json list = Json::array();
  for (size_t position = 0; position < search.outcomes.size(); ++position) {
    const auto& [strengths, weights, dayGrouping] = search.grid.SetAt(position);
    const Outcomes& outcomes = search.outcomes[position];
    list.push_back(
        Json::array({weights.firstLast, weights.secondLast, weights.agregation, strengths.high,
                     strengths.low, dayGrouping, outcomes.sleepSeconds, outcomes.hibernateSeconds,
                     outcomes.resumesFromSleep, outcomes.resumesFromHibernate}));
  }
  return list;
}

Json SearchJson(const Search& search, bool each) {
  Json list = Json::array();
  for (const BestSet& best : search.best) {
    list.push_back({{"name", best.name},
                    {"value", best.value},
                    {"score", JsonNumber(best.score)},
                    {"baseline", JsonNumber(best.baseline)},
                    {"set", SetJson(ReadBestSet(best.value))}});
  }
  Json json = {{"records", search.records},
               {"sets", search.grid.Size()},
               {"baselineOutcome", OutcomesJson(search.baseline)},
               {"best", list}};
  if (each) json["each"] = EachSetJson(search);
  return json;
}

std::string TableLine(const std::vector<std::string>& cells) {
  constexpr size_t kWidth = 12;
  std::string line;
  for (const std::string& cell : cells) {
    line += cell + std::string(kWidth - std::min(kWidth - 1, cell.size()), ' ');
  }
  return line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
}

std::string TimeoutText(int64_t seconds) {
  if (seconds == 0) return "no timeout";
  return "a timeout of " + std::to_string(seconds / kSecondsPerMinute) + " minutes";
}

std::string Text(const Search& search) {
  std::string text = std::to_string(search.records) + " records, " +
                     std::to_string(search.grid.Size()) + " sets\n\nWith " +
                     TimeoutText(search.timeoutSeconds) + ":\n" + OutcomesText(search.baseline);
  if (search.best.empty()) return text + "\nNo weights (WR), so no set is chosen.\n";
  text += '\n' + TableLine({"Name", "Weight", "Score", "Timeout's", "Set"});
  for (size_t i = 0; i < search.best.size(); ++i) {
    const BestSet& best = search.best[i];
    text += TableLine({best.name, std::to_string(search.weights[i]), FloatText(best.score),
                       FloatText(best.baseline),
                       best.value == kNoBestSet ? "-1, no better than the timeout" : best.value});
  }
  return text;
}

}  // namespace

void RunSearch(const Options& options, Results& results) {
  const Search search = RunOn(options, results);
  if (options.json) {
    results.output = IdentifiedLine(SearchJson(search, options.each), results.identity);
    return;
  }
  if (options.each) results.output = IdentityComment(results.identity) + EachSet(search);
  results.output += Text(search);
}

}  // namespace dozewell::replay
