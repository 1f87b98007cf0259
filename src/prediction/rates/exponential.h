#ifndef DOZEWELL_PREDICTION_RATES_EXPONENTIAL_H_
#define DOZEWELL_PREDICTION_RATES_EXPONENTIAL_H_

namespace dozewell {

// e to the power of `x`, for x up to 700; 0 below -700. Within two units of the last place. The
// runtime libraries of different systems round their exp differently, and a decision must not
// depend on that, so this one consists of additions and multiplications alone.
double Exponential(double x);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_EXPONENTIAL_H_
