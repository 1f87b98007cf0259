#include "prediction/rates/exponential.h"

#include <doctest/doctest.h>

#include <cmath>

namespace dozewell {

TEST_CASE("the exponential of zero is exactly one") {
  CHECK(Exponential(0.0) == 1.0);
  CHECK(Exponential(-0.0) == 1.0);
}

TEST_CASE("the exponential is within two units of the last place of the runtime library's") {
  for (int step = 0; step < 3778; ++step) {
    const double x = -699 + step * 0.37;
    const double expected = std::exp(x);
    CHECK(std::abs(Exponential(x) - expected) <=
          2 * (std::nextafter(expected, HUGE_VAL) - expected));
  }
}

TEST_CASE("the exponential has the same bits on every system") {
  CHECK(Exponential(1.0) == 0x1.5bf0a8b14576ap+1);
  CHECK(Exponential(-0.5) == 0x1.368b2fc6f960ap-1);
  CHECK(Exponential(-20.25) == 0x1.b93de1e27ca3bp-30);
}

TEST_CASE("numbers of which no power of two is split off have the bits that splitting gives") {
  CHECK(Exponential(-0.2999) == 0x1.7b563c820af26p-1);
  CHECK(Exponential(-0.05) == 0x1.e7078b0a726a6p-1);
  CHECK(Exponential(0.25) == 0x1.48b5e3c3e8186p+0);
}

TEST_CASE("the exponential of a large negative number is zero") {
  CHECK(Exponential(-700.5) == 0.0);
  CHECK(Exponential(-1e300) == 0.0);
  CHECK(Exponential(-700.0) > 0.0);
}

}  // namespace dozewell
