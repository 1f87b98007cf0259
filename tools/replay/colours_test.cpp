#include "replay/colours.h"

#include <doctest/doctest.h>

namespace dozewell::replay {

TEST_CASE("colours are wanted unless NO_COLOR says anything or the terminal is dumb") {
  CHECK(ColoursAreWanted(nullptr, nullptr));
  CHECK(ColoursAreWanted("", "xterm"));
  CHECK_FALSE(ColoursAreWanted("1", "xterm"));
  CHECK_FALSE(ColoursAreWanted("0", nullptr));
  CHECK_FALSE(ColoursAreWanted(nullptr, "dumb"));
  CHECK(ColoursAreWanted(nullptr, "dumber"));
}

}  // namespace dozewell::replay
