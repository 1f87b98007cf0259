#include "report/week_section.h"

#include <doctest/doctest.h>

#include <vector>

#include "prediction/tracker.h"
#include "support/text_parts.h"

namespace dozewell::report {

TEST_CASE("the map has a cell for each half hour, which says when and how likely") {
  std::vector<float> probabilities(7 * 48, 0.0F);
  probabilities[0] = kUnknownProbability;
  probabilities[4 * 48 + 17] = 0.625F;
  const std::string section = WeekSection({7, 1440, 30}, probabilities);
  CHECK(CountOf("<td ", section) == 7 * 48);
  CHECK(CountOf("<th scope=\"row\">", section) == 7);
  CHECK(Contains(section,
                 "<td style=\"--likely:63\" title=\"Mon 08:30 to 09:00: 63 %\">"
                 "<span class=\"unseen\">63</span></td>"));
  CHECK(Contains(section,
                 "<td class=\"unknown\" title=\"Thu 00:00 to 00:30: not known\">"
                 "<span class=\"unseen\">?</span></td>"));
  CHECK(Contains(section, "title=\"Sun 23:30 to 24:00: 0 %\""));
  CHECK(Contains(section, "<th scope=\"colgroup\" colspan=\"6\">21</th>"));
  CHECK(Contains(section, "Each cell is 30 minutes of the cycle"));
}

TEST_CASE("a map of odd cells labels them with minutes too") {
  const std::string section = WeekSection({1, 60, 30}, std::vector<float>(2, 0.5F));
  CHECK(Contains(section, "<th scope=\"colgroup\" colspan=\"6\">00:12</th>"));
  CHECK(Contains(section, "<th scope=\"row\">day 0</th>"));
}

TEST_CASE("the page says that a cycle has no map") {
  const std::string section = WeekSection({1, 60, 7}, std::vector<float>(7, 0.5F));
  CHECK(Contains(section, "Only a cycle of whole days has a map."));
  CHECK(CountOf("<table", section) == 0);
}

}  // namespace dozewell::report
