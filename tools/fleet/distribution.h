#ifndef DOZEWELL_FLEET_DISTRIBUTION_H_
#define DOZEWELL_FLEET_DISTRIBUTION_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "fleet/machine_row.h"

namespace dozewell::fleet {

// How a figure is spread over machines: how many have it in each of some bins, which are the same
// for every fleet.
class Distribution {
 public:
  // Bin i holds what is above edge i - 1 and at most edge i; a last one holds what is above all.
  explicit Distribution(std::span<const int32_t> edges)
      : edges_(edges), counts_(edges.size() + 1) {}

  // Counts the machine whose figure is dividend / divisor. A divisor of 0 means that it has none.
  void Count(int64_t dividend, int64_t divisor);
  void Count(double figure);

  std::span<const int64_t> Counts() const { return counts_; }
  // What a bin holds: "0 or less", "5 to 10", "more than 50".
  std::string BinText(size_t bin) const;

 private:
  std::span<const int32_t> edges_;
  std::vector<int64_t> counts_;
};

// The distributions of what machines come to with one choice.
struct Spread {
  Distribution waitsPerWeek;       // resumes from hibernation
  Distribution hibernatedPercent;  // of the time asleep or hibernated
  Distribution gain;               // of score, against the user's own timeout

  Spread();
  void Count(const MachineRow& row, size_t choice, std::optional<double> gained);
};

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_DISTRIBUTION_H_
