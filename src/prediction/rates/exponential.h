#ifndef DOZEWELL_PREDICTION_RATES_EXPONENTIAL_H_
#define DOZEWELL_PREDICTION_RATES_EXPONENTIAL_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace dozewell {

// 1 / 1!, 1 / 2!, and so on. The factorials are exact.
inline constexpr auto kInverseFactorials = [] {
  std::array<double, 14> inverse = {};
  double factorial = 1;
  for (size_t i = 0; i < inverse.size(); ++i) {
    factorial *= static_cast<double>(i + 1);
    inverse[i] = 1 / factorial;
  }
  return inverse;
}();

// The exponential for |x| up to ln 2 / 2: Taylor's series by Horner's rule, of which the first term
// that is left out lies below the last place of the sum.
constexpr double ExponentialNearZero(double x) {
  double sum = kInverseFactorials.back();
  for (size_t i = kInverseFactorials.size() - 1; i-- > 0;) sum = sum * x + kInverseFactorials[i];
  return 1 + sum * x;
}

// 2^power, for powers of normal numbers.
constexpr double PowerOfTwo(int64_t power) {
  constexpr int64_t kExponentBias = 1023;
  constexpr int kFractionBits = 52;
  return std::bit_cast<double>(static_cast<uint64_t>(power + kExponentBias) << kFractionBits);
}

// e to the power of `x`, for x up to 700; 0 below -700. Within two units of the last place. The
// runtime libraries of different systems round their exp differently, and a decision must not
// depend on that, so this one consists of additions and multiplications alone.
constexpr double Exponential(double x) {
  constexpr double kLowest = -700.0;
  constexpr double kSurelyNear = 0.3;  // less than ln 2 / 2
  constexpr double kTwosInE = 1.4426950408889634;
  // ln 2 in two parts, after Cody and Waite: the high one has so few digits that its product with
  // any exponent of a double is exact.
  constexpr double kLn2High = 0.693147180369123816490;
  constexpr double kLn2Low = 1.90821492927058770002e-10;

  // Nearly all of a forecast: no power of two is split off.
  if (x > -kSurelyNear && x < kSurelyNear) return ExponentialNearZero(x);
  if (x < kLowest) return 0.0;
  const auto twos = static_cast<int64_t>(x * kTwosInE + (x < 0 ? -0.5 : 0.5));
  const auto count = static_cast<double>(twos);
  return ExponentialNearZero((x - count * kLn2High) - count * kLn2Low) * PowerOfTwo(twos);
}

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_EXPONENTIAL_H_
