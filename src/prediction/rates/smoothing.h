#ifndef DOZEWELL_PREDICTION_RATES_SMOOTHING_H_
#define DOZEWELL_PREDICTION_RATES_SMOOTHING_H_

#include <array>
#include <cstddef>
#include <span>

#include "prediction/rates/exponential.h"

namespace dozewell {

// Spreads each number over its neighbours by exp(-(distance / sigma)^2 / 2). That is 1 at the
// number itself, so evidence from nearby is added and not averaged.
class Bell {
 public:
  static constexpr size_t kMostReach = 15;

  // `reach` is how many neighbours count on each side.
  constexpr Bell(double sigma, size_t reach) : reach_(reach) {
    for (size_t distance = 1; distance <= reach; ++distance) {
      const double sigmas = static_cast<double>(distance) / sigma;
      weights_[distance - 1] = Exponential(-sigmas * sigmas / 2);
    }
  }
  // A bell that reaches as far as three sigmas.
  constexpr explicit Bell(double sigma) : Bell(sigma, static_cast<size_t>(3 * sigma)) {}

  constexpr size_t Reach() const { return reach_; }
  // For distances from 1 on.
  constexpr double WeightAt(size_t distance) const { return weights_[distance - 1]; }

 private:
  size_t reach_;
  std::array<double, kMostReach> weights_ = {};
};

enum class Ends { Open, Joined };

// How many numbers Smooth takes, with a bell's reach of them for each row at both ends.
inline constexpr size_t kMostSmoothed = 1024;

// Smooths rows that lie side by side: `numbers` begins with the first of each of `rows` rows, after
// which come the second ones. Where a row's ends are joined the last number is also the first one's
// neighbour, and a bell must not reach half around.
void Smooth(std::span<double> numbers, size_t rows, Ends ends, const Bell& bell);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_SMOOTHING_H_
