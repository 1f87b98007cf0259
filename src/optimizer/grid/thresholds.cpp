#include "optimizer/grid/thresholds.h"

#include <algorithm>

#include "prediction/slot_probability.h"

namespace dozewell {
namespace {

void SortUniquely(std::vector<float>& values) {
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
}

size_t IndexOf(float value, const std::vector<float>& values) {
  return static_cast<size_t>(std::lower_bound(values.begin(), values.end(), value) -
                             values.begin());
}

}  // namespace

Thresholds::Thresholds(const std::vector<StrengthPair>& strengths) {
  for (const StrengthPair& pair : strengths) {
    lows.push_back(ThresholdOf(pair.low));
    highs.push_back(ThresholdOf(pair.high));
  }
  SortUniquely(lows);
  SortUniquely(highs);
  pairs.reserve(strengths.size());
  for (const StrengthPair& pair : strengths) {
    pairs.push_back({IndexOf(ThresholdOf(pair.low), lows), IndexOf(ThresholdOf(pair.high), highs)});
  }
}

}  // namespace dozewell
