#include "fleet/totals.h"

#include <algorithm>
#include <tuple>

#include "walk/score.h"

namespace dozewell::fleet {
namespace {

void AddTo(GroupTotals& totals, const MachineRow& row) {
  ++totals.machines;
  totals.sums.resize(row.outcomes.size());
  for (size_t i = 0; i < row.outcomes.size(); ++i) totals.sums[i].Add(row.outcomes[i]);
}

bool LosesMore(const Loser& a, const Loser& b) {
  return std::tie(a.gain, a.path) < std::tie(b.gain, b.path);
}

}  // namespace

FleetTotals::FleetTotals(const FleetQuestion& question, const Groups& groups)
    : question_(question),
      groups_(groups),
      own_(question.Own()),
      service_(question.Find(WalkedKind::Service, question.strength)) {
  all_.sums.resize(question.choices.size());
  for (const std::optional<size_t> choice :
       {std::optional(own_), question.Find(WalkedKind::Settings), service_,
        question.Find(WalkedKind::Rates, question.strength)}) {
    if (choice) spreads_.push_back({*choice, {}});
  }
}

std::optional<double> FleetTotals::Gain(const MachineRow& row, size_t choice) const {
  if (question_.strength >= question_.weights.size()) return std::nullopt;
  const int32_t weight = question_.weights[question_.strength];
  const std::optional<double> own = ScoreOf(row.outcomes[own_], weight);
  const std::optional<double> with = ScoreOf(row.outcomes[choice], weight);
  if (!own || !with) return std::nullopt;
  return *with - *own;
}

void FleetTotals::AddLoser(const MachineRow& row) {
  const std::optional<double> gain = service_ ? Gain(row, *service_) : std::nullopt;
  if (!gain || *gain >= 0) return;
  ++numberOfLosers_;
  const Loser loser = {row.path, *gain,      row.records,        row.from,
                       row.to,   row.bounds, row.outcomes[own_], row.outcomes[*service_]};
  losers_.insert(std::ranges::upper_bound(losers_, loser, LosesMore), loser);
  if (losers_.size() > kMostLosers) losers_.pop_back();
}

void FleetTotals::Add(const MachineRow& row) {
  if (!row.reason.empty()) {
    broken_.push_back({row.path, row.reason});
    return;
  }
  if (!row.damage.empty()) damaged_.push_back({row.path, row.damage});
  AddTo(all_, row);
  AddTo(byGroup_[groups_.Of(row.path)], row);
  for (auto& [choice, spread] : spreads_) spread.Count(row, choice, Gain(row, choice));
  AddLoser(row);
  if (row.records == 0) return;
  from_ = to_ == 0 ? row.from : std::min(from_, row.from);
  to_ = std::max(to_, row.to);
}

std::optional<Recommendation> Recommend(const FleetQuestion& question, const GroupTotals& group,
                                        WalkedKind kind, const EnergyRates& rates) {
  const int64_t ownWaits = group.sums[question.Own()].resumesFromHibernate;
  const auto worth = [&](const Recommendation& candidate) {
    const OutcomeSums& sums = group.sums[candidate.choice];
    const double energy = rates.KilowattHours(sums);
    const auto waits = static_cast<double>(sums.resumesFromHibernate);
    return candidate.isWithinWaits ? std::tuple(0, energy, waits) : std::tuple(1, waits, energy);
  };
  std::optional<Recommendation> best;
  for (size_t strength = 0; strength < question.weights.size(); ++strength) {
    const std::optional<size_t> choice = question.Find(kind, strength);
    if (!choice) continue;
    const Recommendation candidate = {strength, *choice,
                                      group.sums[*choice].resumesFromHibernate <= ownWaits};
    if (!best || worth(candidate) < worth(*best)) best = candidate;
  }
  return best;
}

}  // namespace dozewell::fleet
