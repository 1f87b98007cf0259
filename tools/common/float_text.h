#ifndef DOZEWELL_COMMON_FLOAT_TEXT_H_
#define DOZEWELL_COMMON_FLOAT_TEXT_H_

#include <string>

namespace dozewell {

// What C's "%.9g" prints, whatever the locale and the runtime library: enough digits to tell any
// two floats apart. Not-a-number is "nan" without a sign.
std::string FloatText(float value);

// Reads back as the same number: a whole number without a fraction if 64 bits can hold it,
// otherwise the shortest form. Not-a-number is "nan" without a sign.
std::string DoubleText(double value);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_FLOAT_TEXT_H_
