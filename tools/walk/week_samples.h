#ifndef DOZEWELL_WALK_WEEK_SAMPLES_H_
#define DOZEWELL_WALK_WEEK_SAMPLES_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "optimizer/simulator/sim_time_line.h"
#include "prediction/history_file.h"

namespace dozewell {

// A score, and the range that it might as well have come out in.
struct ScoreRange {
  double score;
  double low;
  double high;

  bool operator==(const ScoreRange&) const = default;
};

// How much a score owes to the weeks that a history happens to have. Samples are drawn of as many
// weeks as there are, each with replacement, so that some weeks come several times and some not at
// all. They depend on the history alone, and are the same on every system.
class WeekSamples {
 public:
  WeekSamples(std::span<const HistoryRecord> history, size_t weeks);

  // The score of all weeks, and the range that 95 of 100 samples lie in. None where the weeks have
  // no score.
  std::optional<ScoreRange> RangeOf(std::span<const Outcomes> weeks, int32_t weight) const;

 private:
  size_t weeks_;
  std::vector<uint32_t> drawn_;  // the weeks of one sample after the other
};

}  // namespace dozewell

#endif  // DOZEWELL_WALK_WEEK_SAMPLES_H_
