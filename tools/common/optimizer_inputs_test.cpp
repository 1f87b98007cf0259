#include "common/optimizer_inputs.h"

#include <doctest/doctest.h>

#include "common/tool_error.h"

namespace dozewell {

TEST_CASE("a hibernate-after timeout is 10 minutes unless one is given") {
  CHECK(HibernateAfterSeconds(std::nullopt) == 600);
  CHECK(HibernateAfterSeconds("0") == 0);
  CHECK(HibernateAfterSeconds("never") == 0);
  CHECK(HibernateAfterSeconds("3h") == 10800);
  CHECK(HibernateAfterSeconds("4294967295") == 257698037700);
  CHECK_THROWS_WITH_AS(
      HibernateAfterSeconds("4294967296"),
      "--hibernate-after: not never or 1 to 4294967295 minutes, such as 45m or 1h30m: "
      "4294967296",
      ToolError);
}

TEST_CASE("a timeout to compare with is three hours unless one is given") {
  CHECK(ComparedTimeoutSeconds(std::nullopt) == 10800);
  CHECK(ComparedTimeoutSeconds("45m") == 2700);
}

}  // namespace dozewell
