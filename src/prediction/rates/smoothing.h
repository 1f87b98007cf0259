#ifndef DOZEWELL_PREDICTION_RATES_SMOOTHING_H_
#define DOZEWELL_PREDICTION_RATES_SMOOTHING_H_

#include <cstddef>
#include <span>

namespace dozewell {

// Spreads each number over its neighbours by exp(-(distance / sigma)^2 / 2). That is 1 at the
// number itself, so evidence from nearby is added and not averaged.
struct Bell {
  double sigma;
  size_t reach;  // how many neighbours count on each side
};

// A bell that reaches as far as three sigmas.
Bell BellOf(double sigma);

// Which numbers of an array are neighbours: each `step`-th one from the first on. In a ring the
// last one is also the first one's neighbour, and a bell must not reach half around it.
struct Row {
  size_t first;
  size_t length;
  size_t step;
  bool isRing;
};

void Smooth(std::span<double> numbers, const Row& row, const Bell& bell);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_SMOOTHING_H_
