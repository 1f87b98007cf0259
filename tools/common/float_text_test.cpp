#include "common/float_text.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

namespace dozewell {

constexpr float kFloatInfinity = std::numeric_limits<float>::infinity();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST_CASE("a float is written with nine significant digits") {
  CHECK(FloatText(0.0F) == "0");
  CHECK(FloatText(-0.0F) == "-0");
  CHECK(FloatText(1.0F) == "1");
  CHECK(FloatText(-1.0F) == "-1");
  CHECK(FloatText(0.1F) == "0.100000001");
  CHECK(FloatText(1.0F / 3.0F) == "0.333333343");
  CHECK(FloatText(0.0001F) == "9.99999975e-05");
  CHECK(FloatText(123456792.0F) == "123456792");
  CHECK(FloatText(1e9F) == "1e+09");
  CHECK(FloatText(std::numeric_limits<float>::max()) == "3.40282347e+38");
  CHECK(FloatText(std::numeric_limits<float>::denorm_min()) == "1.40129846e-45");
}

TEST_CASE("not-a-number has no sign, infinity does") {
  CHECK(FloatText(std::numeric_limits<float>::quiet_NaN()) == "nan");
  CHECK(FloatText(-std::numeric_limits<float>::quiet_NaN()) == "nan");
  CHECK(FloatText(kFloatInfinity) == "inf");
  CHECK(FloatText(-kFloatInfinity) == "-inf");
}

TEST_CASE("a double is written so that it reads back") {
  CHECK(DoubleText(1337027146.0) == "1337027146");
  CHECK(DoubleText(-5.0) == "-5");
  CHECK(DoubleText(0.0) == "0");
  CHECK(DoubleText(-0.0) == "-0");
  CHECK(DoubleText(0.1) == "0.1");
  CHECK(DoubleText(1337027146.25) == "1337027146.25");
  CHECK(DoubleText(9223372036854774784.0) == "9223372036854774784");
  CHECK(DoubleText(9223372036854775808.0) == "9223372036854775808");
  CHECK(DoubleText(-9223372036854775808.0) == "-9223372036854775808");
  CHECK(DoubleText(1e300) == "1e+300");
  CHECK(DoubleText(5e-324) == "5e-324");
  CHECK(DoubleText(kInfinity) == "inf");
  CHECK(DoubleText(-kInfinity) == "-inf");
  CHECK(DoubleText(-std::numeric_limits<double>::quiet_NaN()) == "nan");
}

}  // namespace dozewell
