#include "common/format_text.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("text is formatted as printf does") {
  CHECK(FormatText("%s %02d:%02d, %.1f %%|%-5s|", "Mon", 7, 5, 12.25, "ab") ==
        "Mon 07:05, 12.2 %|ab   |");
  CHECK(FormatText("%lld", 9007199254740993LL) == "9007199254740993");
  CHECK(FormatText("%s", "") == "");
}

TEST_CASE("formatted text may have any length") {
  const std::string large(100000, 'x');
  CHECK(FormatText("<%s>", large.c_str()) == "<" + large + ">");
}

}  // namespace dozewell
