#include "fleet/distribution.h"

#include "base/wall_clock.h"

namespace dozewell::fleet {
namespace {

constexpr int32_t kWaitsPerWeek[] = {0, 1, 2, 3, 5, 7, 10, 14, 21};
constexpr int32_t kPercent[] = {10, 20, 30, 40, 50, 60, 70, 80, 90, 100};
constexpr int32_t kGain[] = {-20, -10, -5, -2, 0, 2, 5, 10, 20, 50};

}  // namespace

void Distribution::Count(int64_t dividend, int64_t divisor) {
  if (divisor <= 0) return;
  size_t bin = 0;
  while (bin < edges_.size() && dividend > edges_[bin] * divisor) ++bin;
  ++counts_[bin];
}

void Distribution::Count(double figure) {
  size_t bin = 0;
  while (bin < edges_.size() && figure > edges_[bin]) ++bin;
  ++counts_[bin];
}

std::string Distribution::BinText(size_t bin) const {
  if (bin == 0) {
    return edges_[0] == 0 ? "0" : "up to " + std::to_string(edges_[0]);
  }
  const std::string low = std::to_string(edges_[bin - 1]);
  if (bin == edges_.size()) return "above " + low;
  return low + " to " + std::to_string(edges_[bin]);
}

Spread::Spread() : waitsPerWeek(kWaitsPerWeek), hibernatedPercent(kPercent), gain(kGain) {}

void Spread::Count(const MachineRow& row, size_t choice, std::optional<double> gained) {
  constexpr int64_t kWeek = 7 * kSecondsPerDay;
  const auto& [asleep, hibernated, fromSleep, fromHibernate] = row.outcomes[choice];
  waitsPerWeek.Count(fromHibernate * kWeek, row.to - row.from);
  hibernatedPercent.Count(100 * hibernated, asleep + hibernated);
  if (gained) gain.Count(*gained);
}

}  // namespace dozewell::fleet
