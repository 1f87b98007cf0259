#ifndef DOZEWELL_COMMON_COMPARISON_H_
#define DOZEWELL_COMMON_COMPARISON_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "optimizer/parameter_search.h"
#include "optimizer/simulator/parameter_grid.h"
#include "optimizer/simulator/sim_time_line.h"
#include "prediction/configurations.h"
#include "prediction/history_file.h"

namespace dozewell {

// One way to spend the sleeps of a history.
struct Choice {
  std::string name;   // "10 minutes", "never", "settings", "Best0", "clairvoyant"
  std::string value;  // the text of an adopted set; empty for every other choice
  Outcomes outcomes;
  std::optional<int64_t> hibernateAfterMinutes = {};  // of a timeout; 0 is never

  bool operator==(const Choice&) const = default;
};

// The outcomes of one history with timeouts that a user can set, with predictions, and with the
// best predictions possible.
struct Comparison {
  std::vector<Choice> fixed;    // hibernate-after timeouts, from the shortest to never
  Choice settings;              // the parameters as they are
  std::vector<Choice> adopted;  // what the service makes of each result of a search
  Choice clairvoyant;

  Outcomes baseline;  // the timeout that the search measures its sets against
  uint64_t sets;      // how many sets were searched
  std::vector<BestSet> best;
};

// The parameters of a result of a search; nothing when it has none.
std::optional<ParameterSet> SetOf(const BestSet& best);

// Makes the comparison. The search takes ranges and weights from the configuration. Throws what a
// simulation throws.
Comparison Compare(std::span<const HistoryRecord> history, IConfigurations& configuration,
                   int64_t hibernateAfterSeconds);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_COMPARISON_H_
