#include "optimizer/best_set.h"

#include <doctest/doctest.h>

#include <array>
#include <string>

#include "optimizer/simulator/native_simulator_configurations.h"

namespace dozewell {
namespace {

using Numbers = std::array<int32_t, 6>;

}  // namespace

TEST_CASE("a best set is named after its index, in nine characters at most") {
  CHECK(BestSetName(0) == "Best0");
  CHECK(BestSetName(12) == "Best12");
  CHECK(BestSetName(99999) == "Best99999");
  CHECK(BestSetName(123456) == "Best12345");
}

TEST_CASE("a best set's text holds its weights, thresholds and grouping") {
  NativeSimulatorConfigurations set(L"", "7", "10", "20", "70", "90", "60", "2");
  CHECK(BestSetText(set) == "10,20,70,90,60,2");
  NativeSimulatorConfigurations none;
  CHECK(BestSetText(none) == ",,,,,");
}

TEST_CASE("six numbers with commas between them are a set") {
  const auto read = [](const char* text) {
    const BestSetApplication application = ReadBestSet(text);
    CHECK(application.disabled == 0);
    CHECK(application.feedback == 2);
    REQUIRE(application.parameters.has_value());
    return *application.parameters;
  };
  CHECK(read("10,20,70,90,60,2") == Numbers{10, 20, 70, 90, 60, 2});
  CHECK(read(" 10,\t20,\n70,\v90,\f60,\r2") == Numbers{10, 20, 70, 90, 60, 2});
  CHECK(read("-1,+2,-0,007,5,6") == Numbers{-1, 2, 0, 7, 5, 6});
  CHECK(read("1,2,3,4,5,6,7") == Numbers{1, 2, 3, 4, 5, 6});
  CHECK(read("1,2,3,4,5,6x") == Numbers{1, 2, 3, 4, 5, 6});
  // Numbers beyond 32 bits keep their low 32 bits.
  CHECK(read("4294967301,2147483648,-2147483649,18446744073709551617,99999999999999999999999,6") ==
        Numbers{5, INT32_MIN, INT32_MAX, 1, -159383553, 6});
}

TEST_CASE("anything less than six numbers applies nothing") {
  for (const char* const text :
       {"", "x", "1,2,3,4,5", "1,2,3,4,5,", "1,2,3,4,5,x", "1,2,3,4,5,-", "1,2,3,4,5,+ 6",
        "1,2,3,4,5,- 6", "1 ,2,3,4,5,6", "1;2,3,4,5,6", "1 2 3 4 5 6", ",,,,,", ",1,2,3,4,5,6",
        "-1 ", " -1", "-1,", "-01"}) {
    CAPTURE(text);
    const BestSetApplication application = ReadBestSet(text);
    CHECK(application.disabled == 0);
    CHECK(application.feedback == 0);
    CHECK_FALSE(application.parameters.has_value());
  }
}

TEST_CASE("exactly -1 disables prediction") {
  const BestSetApplication application = ReadBestSet("-1");
  CHECK(application.disabled == 1);
  CHECK(application.feedback == 3);
  CHECK_FALSE(application.parameters.has_value());
}

}  // namespace dozewell
