#ifndef DOZEWELL_REPORT_WALKED_TABLE_H_
#define DOZEWELL_REPORT_WALKED_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "prediction/predictor_choice.h"
#include "walk/walk_forward.h"
#include "walk/week_samples.h"

namespace dozewell::report {

// A walk of the recorded history, and what of it is this machine's.
struct WalkedHistory {
  const Walk& walk;  // with at least one sleep
  const WeekSamples& samples;
  std::optional<size_t> strength;  // of the settings; nothing when it has no weight
  PredictorKind predictor;
  int64_t userTimeoutSeconds;

  // What became of the sleeps with the timeout that the user has set.
  const WalkedChoice& Own() const { return walk.Timeout(userTimeoutSeconds / 60); }
  // What became of them on this machine, with its wakes or when nothing can wake it. Without a
  // strength that is what its settings predict, for either.
  const WalkedChoice& Machine(bool canWake) const;
  // A kind that has an own choice for each strength. There must be a strength.
  const WalkedChoice& AtStrength(WalkedKind kind) const { return walk.Of(kind, *strength); }
  // Nothing without a strength.
  std::optional<ScoreRange> Points(const WalkedChoice& choice) const;
  // From a single week nothing can be said of chance, so points have no range then.
  bool HasRanges() const { return walk.weeks > 1; }
};

// With one decimal: "79.1".
std::string PointsText(double points);

struct WalkedRow {
  std::string name;
  const WalkedChoice& choice;
};

// Rows under a title; without a title there is no line for it.
struct WalkedRows {
  const char* title;
  std::vector<WalkedRow> rows;
};

// What became of the sleeps with each choice: hours asleep, waits, and points where there are any.
std::string WalkedTable(const char* caption, const WalkedHistory& history,
                        const std::vector<WalkedRows>& groups);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_WALKED_TABLE_H_
