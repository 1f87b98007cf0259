#include "fleet/groups.h"

#include <doctest/doctest.h>

#include "common/tool_error.h"

namespace dozewell::fleet {

TEST_CASE("Without a file all machines are one group") {
  CHECK(Groups().Of("machines/PC-1/zs7state.dat") == "all machines");
}

TEST_CASE("A machine is in the group of the last part of its path that has one") {
  const Groups groups("# NAME,GROUP\nsales,Sales\n\r\npc-7 , The lab, first floor\nb.csv,B\nc,C\n",
                      "g");
  CHECK(groups.Of("machines/sales/PC-1/zs7state.dat") == "Sales");
  CHECK(groups.Of(R"(machines\Sales\PC-7\zs7state.dat)") == "The lab, first floor");
  CHECK(groups.Of("sales/b.csv") == "B");
  CHECK(groups.Of("sales/c.csv") == "C");
  CHECK(groups.Of("machines/PC-8/zs7state.dat") == "other machines");
}

TEST_CASE("Lines that name no group, and names with two, are refused") {
  const auto fails = [](const char* text, const char* error) {
    CHECK_THROWS_WITH_AS(Groups(text, "g"), error, ToolError);
  };
  fails("a,b\nc\n", "g: line 2: not NAME,GROUP");
  fails("a, \n", "g: line 1: not NAME,GROUP");
  fails(",b\n", "g: line 1: not NAME,GROUP");
  fails("a,b\nA,c\n", "g: line 2: A is in b already");
  CHECK_NOTHROW(Groups("a,b\nA,b\n", "g"));
}

}  // namespace dozewell::fleet
