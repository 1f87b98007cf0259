#include "common/history_io.h"
#include "common/learning.h"
#include "replay/commands.h"
#include "replay/file_configurations.h"

namespace dozewell::replay {

void RunLearn(const Options& options, Results& results) {
  RequireNoInput(options.data.value(),
                 {{"--history", options.history}, {"--settings", options.settings}});
  const History history = LoadHistory(options.history.value(), results.warnings);
  FileConfigurations configuration(LoadSettings(options.settings));
  Learning learning(history, configuration, options.data.value(), results.warnings);
  learning.Commit();

  const std::string records = std::to_string(learning.Records());
  const std::string inOrder = std::to_string(learning.InOrder());
  const std::string refused = std::to_string(learning.Refused());
  results.output = options.json ? "{\"records\":" + records + ",\"inOrder\":" + inOrder +
                                      ",\"refused\":" + refused + "}\n"
                                : *options.data + ": learnt from " + records + " records, " +
                                      inOrder + " in order, " + refused + " refused\n";
}

}  // namespace dozewell::replay
