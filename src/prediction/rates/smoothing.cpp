#include "prediction/rates/smoothing.h"

#include <algorithm>

namespace dozewell {

void Smooth(std::span<double> numbers, size_t rows, Ends ends, const Bell& bell) {
  // The numbers as they were, between what lies beyond the ends of their rows: nothing, or the
  // other end.
  std::array<double, kMostSmoothed> room;
  const size_t beyond = bell.Reach() * rows;
  const std::span before = std::span(room).first(numbers.size() + 2 * beyond);
  const std::span head = before.first(beyond);
  const std::span tail = before.last(beyond);
  std::ranges::copy(numbers, before.subspan(beyond).begin());
  if (ends == Ends::Joined) {
    std::ranges::copy(numbers.last(beyond), head.begin());
    std::ranges::copy(numbers.first(beyond), tail.begin());
  } else {
    std::ranges::fill(head, 0.0);
    std::ranges::fill(tail, 0.0);
  }
  for (size_t distance = 1; distance <= bell.Reach(); ++distance) {
    const double weight = bell.WeightAt(distance);
    const double* const lower = before.data() + beyond - distance * rows;
    const double* const upper = before.data() + beyond + distance * rows;
    for (size_t i = 0; i < numbers.size(); ++i) {
      numbers[i] += weight * lower[i];
      numbers[i] += weight * upper[i];
    }
  }
}

}  // namespace dozewell
