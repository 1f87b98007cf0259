#include "report/set_text.h"

#include <doctest/doctest.h>

namespace dozewell::report {
namespace {

std::string GroupedDays(int32_t dayGrouping) {
  const std::string text = SetText({{50, 30}, {20, 10, 70}, dayGrouping});
  return text.substr(text.find("in use. ") + 8);
}

}  // namespace

TEST_CASE("a set is told in sentences") {
  CHECK(SetText({{50, 30}, {20, 10, 70}, 12}) ==
        "What was last seen of a time of day counts 20\u00A0%, what was seen before that "
        "10\u00A0% and all that is older 70\u00A0%. Below 30\u00A0% the machine is expected to be "
        "idle, from 50\u00A0% on in use. Days that count together: Mon, Tue, Wed, Thu, Fri; and "
        "Sat, Sun.");
}

TEST_CASE("days count together as the tracker has it") {
  CHECK(GroupedDays(0) == "Each day counts alone.");
  CHECK(GroupedDays(127) == "Each day counts alone.");
  CHECK(GroupedDays(255) == "All days count together.");
  CHECK(GroupedDays(128) == "All days count together.");
  CHECK(GroupedDays(1) == "Days that count together: Mon, Tue, Wed, Fri, Sat, Sun; and Thu.");
}

}  // namespace dozewell::report
