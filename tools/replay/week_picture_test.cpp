#include "replay/week_picture.h"

#include <doctest/doctest.h>

#include <limits>
#include <span>
#include <string>
#include <vector>

#include "prediction/tracker.h"

namespace dozewell::replay {
namespace {

constexpr CycleShape kWeek = {7, 1440, 30};

std::vector<float> WeekOf(float probability) {
  return std::vector<float>(size_t{7} * 48, probability);
}

std::string Draw(const CycleShape& shape, std::span<const float> probabilities, bool colour) {
  return DrawCycle(MakeCycleCells(shape, probabilities).value(), colour);
}

}  // namespace

TEST_CASE("a week is drawn from Monday on, a character for each half hour") {
  std::vector<float> probabilities = WeekOf(kUnknownProbability);
  // Thursday, the first day: every shade from midnight on, and the last half hour.
  for (size_t i = 0; i < 10; ++i) probabilities[i] = static_cast<float>(i) / 10 + 0.05F;
  probabilities[47] = 1.0F;
  // Monday from 09:00 to 10:00.
  probabilities[4 * 48 + 18] = 1.0F;
  probabilities[4 * 48 + 19] = 0.0F;
  CHECK(Draw(kWeek, probabilities, false) ==
        "     00:00 03:00 06:00 09:00 12:00 15:00 18:00 21:00\n"
        "Mon |??????????????????@ ????????????????????????????|\n"
        "Tue |????????????????????????????????????????????????|\n"
        "Wed |????????????????????????????????????????????????|\n"
        "Thu | .:-=+*#%@?????????????????????????????????????@|\n"
        "Fri |????????????????????????????????????????????????|\n"
        "Sat |????????????????????????????????????????????????|\n"
        "Sun |????????????????????????????????????????????????|\n"
        "    never in use | .:-=+*#%@| always in use, ? not known\n");
}

TEST_CASE("a character stands for the mean of what is known") {
  // Characters of two minutes, so that every second quarter of an hour begins amid one.
  const CycleShape hour = {1, 60, 15};
  const float probabilities[] = {1.0F, 0.0F, kUnknownProbability, 1.0F};
  CHECK(Draw(hour, probabilities, false) ==
        "       00:00 00:12 00:24 00:36 00:48\n"
        "day 0 |@@@@@@@+       ???????@@@@@@@@|\n"
        "      never in use | .:-=+*#%@| always in use, ? not known\n");
  const CycleShape day = {1, 1440, 15};
  std::vector<float> quarters(96, 0.0F);
  quarters[0] = 1.0F;
  quarters[3] = kUnknownProbability;
  quarters[2] = 0.75F;
  CHECK(Draw(day, quarters, false) ==
        "       00:00 03:00 06:00 09:00 12:00 15:00 18:00 21:00\n"
        "day 0 |+#                                              |\n"
        "      never in use | .:-=+*#%@| always in use, ? not known\n");
}

TEST_CASE("a slot longer than a character goes on over several") {
  const CycleShape shape = {2, 1440, 720};
  const float probabilities[] = {0.0F, 1.0F, 1.0F, 0.0F};
  CHECK(Draw(shape, probabilities, false) ==
        "       00:00 03:00 06:00 09:00 12:00 15:00 18:00 21:00\n"
        "day 0 |                        @@@@@@@@@@@@@@@@@@@@@@@@|\n"
        "day 1 |@@@@@@@@@@@@@@@@@@@@@@@@                        |\n"
        "      never in use | .:-=+*#%@| always in use, ? not known\n");
}

TEST_CASE("impossible probabilities are drawn as the nearest possible one, or as not known") {
  const CycleShape shape = {1, 4, 1};
  const float probabilities[] = {-0.5F, 7.0F, std::numeric_limits<float>::quiet_NaN(),
                                 std::numeric_limits<float>::infinity()};
  CHECK(Draw(shape, probabilities, false) ==
        "       00:00\n"
        "day 0 | @?@|\n"
        "      never in use | .:-=+*#%@| always in use, ? not known\n");
}

TEST_CASE("colours are set where they change and taken back at the end of a row") {
  const CycleShape shape = {1, 5, 1};
  const float probabilities[] = {0.0F, 0.0F, 1.0F, kUnknownProbability, 1.0F};
  CHECK(Draw(shape, probabilities, true) ==
        "       00:00\n"
        "day 0 |\x1b[48;5;17;38;5;15m  \x1b[48;5;220;38;5;16m@\x1b[0m?\x1b[48;5;220;38;5;16m@"
        "\x1b[0m|\n"
        "      never in use | .:-=+*#%@| always in use, ? not known\n");
}

TEST_CASE("the rows of a long cycle are as long as one another") {
  const std::vector<float> probabilities(11, 1.0F);
  const std::string picture = Draw({11, 1, 1}, probabilities, false);
  CHECK(picture.find("day 0  |@|\n") != std::string::npos);
  CHECK(picture.find("day 10 |@|\n") != std::string::npos);
}

}  // namespace dozewell::replay
