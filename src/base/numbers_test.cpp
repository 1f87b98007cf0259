#include "base/numbers.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>
#include <string_view>

namespace dozewell {

TEST_CASE("Atoi reads a number as the Windows runtime does") {
  struct Row {
    std::string_view text;
    int32_t number;
  };
  constexpr Row kRows[] = {
      {"", 0},
      {"70", 70},
      {" \t\n\v\f\r42", 42},
      {"+7", 7},
      {"-7", -7},
      {"--7", 0},
      {"- 7", 0},
      {"12abc", 12},
      {"abc", 0},
      {"0x10", 0},
      {"2147483647", 2147483647},
      {"2147483648", 2147483647},
      {"99999999999999999999", 2147483647},
      {"-2147483648", std::numeric_limits<int32_t>::min()},
      {"-2147483649", std::numeric_limits<int32_t>::min()},
      {"-99999999999999999999", std::numeric_limits<int32_t>::min()},
  };
  for (const Row& row : kRows) {
    CAPTURE(row.text);
    CHECK(Atoi(row.text) == row.number);
  }
}

TEST_CASE("a double that 64 bits cannot hold truncates to the lowest number") {
  constexpr int64_t kLowest = std::numeric_limits<int64_t>::min();
  CHECK(TruncateToInt64(1.9) == 1);
  CHECK(TruncateToInt64(-1.9) == -1);
  CHECK(TruncateToInt64(9223372036854774784.0) == 9223372036854774784);
  CHECK(TruncateToInt64(9223372036854775808.0) == kLowest);
  CHECK(TruncateToInt64(-9223372036854775808.0) == kLowest);
  CHECK(TruncateToInt64(1e300) == kLowest);
  CHECK(TruncateToInt64(-1e300) == kLowest);
  CHECK(TruncateToInt64(std::nan("")) == kLowest);
  CHECK(TruncateToInt64(std::numeric_limits<double>::infinity()) == kLowest);
}

TEST_CASE("sums and products wrap") {
  CHECK(Wrap32(int64_t{65536} * 65536) == 0);
  CHECK(Wrap32(int64_t{2147483647} + 1) == std::numeric_limits<int32_t>::min());
  CHECK(WrapAdd64(std::numeric_limits<int64_t>::max(), 1) == std::numeric_limits<int64_t>::min());
  CHECK(WrapSubtract64(0, std::numeric_limits<int64_t>::min()) ==
        std::numeric_limits<int64_t>::min());
}

}  // namespace dozewell
