#ifndef DOZEWELL_WALK_WALK_FORWARD_H_
#define DOZEWELL_WALK_WALK_FORWARD_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "optimizer/simulator/sim_time_line.h"
#include "prediction/configurations.h"
#include "prediction/history_file.h"
#include "walk/search_calendar.h"

namespace dozewell {

// Ways to spend the sleeps of a history. Of those for a strength there is one for each scoring
// weight; a strength is the position of its weight.
enum class WalkedKind {
  Fixed,               // a hibernate-after timeout
  Settings,            // the predictions of the parameters as they are, without a search
  BestFixed,           // for a strength: the timeout that turns out best
  PastFixed,           // for a strength: before each sleep the timeout that was best until then
  Service,             // for a strength: the service with its searches
  ServiceWithoutWake,  // the same on a machine that cannot be woken
  Rates,               // for a strength: the predictor of rates
  RatesWithoutWake,
  Clairvoyant,  // the best prediction for each sleep
};

struct WalkedChoice {
  WalkedKind kind;
  std::string name;  // "10 minutes", "never", "settings", "service, strength 2"; each one once
  std::optional<size_t> strength = {};
  std::optional<int64_t> hibernateAfterMinutes = {};  // of Fixed and BestFixed; 0 is never
  Outcomes outcomes = {};
  std::vector<Outcomes> weeks = {};  // the same, by the week of the suspend
};

// A history walked forward: each sleep is decided from what came before it alone, and counted as a
// real machine spends it. Where nothing is predicted, the user's own timeout holds.
struct Walk {
  std::vector<int32_t> weights;  // by strength
  std::vector<WalkedChoice> choices;
  std::vector<SearchRun> searches;  // that were due, in the order of time
  size_t sleeps = 0;                // with a resume, which are those that count
  size_t weeks = 0;                 // in which there was a suspend

  // The choice of a kind, which must be there. `strength` does not count for a kind without one.
  const WalkedChoice& Of(WalkedKind kind, size_t strength) const;
  // The choice of a timeout that was walked with; 0 is never.
  const WalkedChoice& Timeout(int64_t minutes) const;
};

// Walks. Parameters, ranges, weights and the sets to begin with come from the configuration; slots
// are of ten minutes, as in every simulation. `userTimeoutSeconds` is the user's own timeout, and 0
// is never. May be called on several threads, each with a configuration of its own. Throws what a
// simulation throws.
Walk WalkForward(std::span<const HistoryRecord> history, IConfigurations& configuration,
                 int64_t userTimeoutSeconds, const SearchHabits& habits);

}  // namespace dozewell

#endif  // DOZEWELL_WALK_WALK_FORWARD_H_
