#ifndef DOZEWELL_FLEET_TOTALS_H_
#define DOZEWELL_FLEET_TOTALS_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fleet/distribution.h"
#include "fleet/energy.h"
#include "fleet/groups.h"
#include "fleet/machine_row.h"
#include "fleet/outcome_sums.h"
#include "fleet/question.h"

namespace dozewell::fleet {

// The page lists so many machines that lose most.
inline constexpr size_t kMostLosers = 100;

struct GroupTotals {
  int64_t machines = 0;
  std::vector<OutcomeSums> sums;  // by choice
};

// A history with something wrong.
struct NotedHistory {
  std::string path;
  std::string what;
};

// A machine to which the service is worth less than its user's own timeout.
struct Loser {
  std::string path;
  double gain;  // of score, below 0
  int64_t records;
  int64_t from;
  int64_t to;
  std::optional<ScoreBounds> bounds;
  Outcomes own;
  Outcomes service;
};

// A choice whose spread over the machines is counted.
struct SpreadOfChoice {
  size_t choice;
  Spread spread;
};

// What all machines come to. Of a machine nothing is kept but these counts, so memory does not grow
// with their number, but for those with something wrong.
class FleetTotals {
 public:
  // Both must outlive the object.
  FleetTotals(const FleetQuestion& question, const Groups& groups);

  void Add(const MachineRow& row);

  const FleetQuestion& Question() const { return question_; }
  // All machines that were judged.
  const GroupTotals& All() const { return all_; }
  const std::map<std::string, GroupTotals>& ByGroup() const { return byGroup_; }
  // Those that could not be judged, and those that were as far as they can be read.
  const std::vector<NotedHistory>& Broken() const { return broken_; }
  const std::vector<NotedHistory>& Damaged() const { return damaged_; }
  const std::vector<SpreadOfChoice>& Spreads() const { return spreads_; }
  // Those that lose most first, and how many lose at all.
  const std::vector<Loser>& Losers() const { return losers_; }
  int64_t NumberOfLosers() const { return numberOfLosers_; }
  // The first and the last time in any history, in wall-clock seconds; 0 without a record.
  int64_t From() const { return from_; }
  int64_t To() const { return to_; }

 private:
  std::optional<double> Gain(const MachineRow& row, size_t choice) const;
  void AddLoser(const MachineRow& row);

  const FleetQuestion& question_;
  const Groups& groups_;
  size_t own_;
  std::optional<size_t> service_;  // with the strength in force
  GroupTotals all_;
  std::map<std::string, GroupTotals> byGroup_;
  std::vector<NotedHistory> broken_;
  std::vector<NotedHistory> damaged_;
  std::vector<SpreadOfChoice> spreads_;
  std::vector<Loser> losers_;
  int64_t numberOfLosers_ = 0;
  int64_t from_ = 0;
  int64_t to_ = 0;
};

// A strength for a group of machines.
struct Recommendation {
  size_t strength;
  size_t choice;
  bool isWithinWaits;  // their users wait no more often than with their own timeout
};

// The strength with which the machines take the least energy while their users wait no more often
// than with their own timeout; where there is none, the one with which they wait least. `kind` is a
// predictor's. Nothing without strengths.
std::optional<Recommendation> Recommend(const FleetQuestion& question, const GroupTotals& group,
                                        WalkedKind kind, const EnergyRates& rates);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_TOTALS_H_
