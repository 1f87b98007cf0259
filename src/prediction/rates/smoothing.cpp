#include "prediction/rates/smoothing.h"

#include <vector>

#include "prediction/rates/exponential.h"

namespace dozewell {

Bell BellOf(double sigma) { return {sigma, static_cast<size_t>(3 * sigma)}; }

void Smooth(std::span<double> numbers, const Row& row, const Bell& bell) {
  // The row as it was, between what lies beyond its ends: nothing, or in a ring the other end.
  std::vector<double> before(row.length + 2 * bell.reach);
  for (size_t i = 0; i < row.length; ++i) {
    before[bell.reach + i] = numbers[row.first + i * row.step];
  }
  for (size_t i = 0; row.isRing && i < bell.reach; ++i) {
    before[i] = before[row.length + i];
    before[bell.reach + row.length + i] = before[bell.reach + i];
  }
  for (size_t distance = 1; distance <= bell.reach; ++distance) {
    const double sigmas = static_cast<double>(distance) / bell.sigma;
    const double weight = Exponential(-sigmas * sigmas / 2);
    for (size_t i = 0; i < row.length; ++i) {
      double& number = numbers[row.first + i * row.step];
      number += weight * before[bell.reach + i - distance];
      number += weight * before[bell.reach + i + distance];
    }
  }
}

}  // namespace dozewell
