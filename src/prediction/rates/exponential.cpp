#include "prediction/rates/exponential.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace dozewell {
namespace {

constexpr double kLowest = -700.0;
constexpr double kSurelyNear = 0.3;  // less than ln 2 / 2
constexpr double kTwosInE = 1.4426950408889634;

// ln 2 in two parts, after Cody and Waite: the high one has so few digits that its product with any
// exponent of a double is exact.
constexpr double kLn2High = 0.693147180369123816490;
constexpr double kLn2Low = 1.90821492927058770002e-10;

// 2^power, for powers of normal numbers.
double PowerOfTwo(int64_t power) {
  constexpr int64_t kExponentBias = 1023;
  constexpr int kFractionBits = 52;
  return std::bit_cast<double>(static_cast<uint64_t>(power + kExponentBias) << kFractionBits);
}

// 1 / 1!, 1 / 2!, and so on. The factorials are exact.
constexpr auto kInverseFactorials = [] {
  std::array<double, 14> inverse = {};
  double factorial = 1;
  for (size_t i = 0; i < inverse.size(); ++i) {
    factorial *= static_cast<double>(i + 1);
    inverse[i] = 1 / factorial;
  }
  return inverse;
}();

// Taylor's series by Horner's rule. Where it is used, |x| is at most ln 2 / 2 and the first term
// that is left out lies below the last place of the sum.
double ExponentialNearZero(double x) {
  double sum = kInverseFactorials.back();
  for (size_t i = kInverseFactorials.size() - 1; i-- > 0;) sum = sum * x + kInverseFactorials[i];
  return 1 + sum * x;
}

}  // namespace

double Exponential(double x) {
  // Nearly all of a forecast: no power of two is split off.
  if (x > -kSurelyNear && x < kSurelyNear) return ExponentialNearZero(x);
  if (x < kLowest) return 0.0;
  const auto twos = static_cast<int64_t>(x * kTwosInE + (x < 0 ? -0.5 : 0.5));
  const auto count = static_cast<double>(twos);
  return ExponentialNearZero((x - count * kLn2High) - count * kLn2Low) * PowerOfTwo(twos);
}

}  // namespace dozewell
