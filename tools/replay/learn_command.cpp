#include "common/history_io.h"
#include "common/json.h"
#include "common/learning.h"
#include "common/problem_place.h"
#include "replay/commands.h"
#include "replay/taken_settings.h"

namespace dozewell::replay {

void RunLearn(const Options& options, Results& results) {
  const std::string& data = options.data.value();
  RequireNoInput(data, {{"--history", options.history}, {"--settings", options.settings}});
  const History history = LoadHistory(options.history.value(), results.warnings);
  results.identity.time = TimeOfLast(WholeRecords(history.bytes));
  FileConfigurations configuration = TakeSettings(options, results);
  const auto place = [&] { return PlaceOfProblem(configuration, {configuration.Name(), data}); };
  Learning learning =
      TellPlace(place, [&] { return Learning(history, configuration, data, results.warnings); });
  learning.Commit();

  results.output = options.json
                       ? IdentifiedLine({{"records", learning.Records()},
                                         {"inOrder", learning.InOrder()},
                                         {"refused", learning.Refused()}},
                                        results.identity)
                       : *options.data + ": learnt from " + std::to_string(learning.Records()) +
                             " records, " + std::to_string(learning.InOrder()) + " in order, " +
                             std::to_string(learning.Refused()) + " refused\n";
}

}  // namespace dozewell::replay
