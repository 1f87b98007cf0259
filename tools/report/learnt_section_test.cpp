#include "report/learnt_section.h"

#include <doctest/doctest.h>

#include <string>
#include <utility>

#include "support/mornings.h"
#include "support/text_parts.h"
#include "support/tracker_data.h"

namespace dozewell::report {
namespace {

// The section of a machine that was seen once on Monday at noon, five times on Saturday at noon,
// three times on Sunday at noon, and else not at all.
std::string NoonSection(const char* grouping) {
  fakes::Configurations configuration;
  configuration.values["DayGrouping"] = grouping;
  TrackerDataPtr data = NewData(configuration);
  const auto observe = [&data](int day, const SlotRecord& slot) {
    for (int quarter = 0; quarter < 2; ++quarter) data->Slots()[Slot(day, 12) + quarter] = slot;
  };
  observe(4, {-1, -1, -1, 1, 0});
  observe(2, {3, 0, 0, 0, 0});
  observe(3, {1, 1, 1, 0, 0});
  ArbitraryCycleProbabilityTracker tracker(&configuration, std::move(data));
  return LearntSection(tracker).html;
}

constexpr const char* kAlone = "0";
constexpr const char* kWeekends = "12";

}  // namespace

TEST_CASE("the map has a bar for each half hour, which says when, how likely and how sure") {
  const std::string section = NoonSection(kAlone);
  CHECK(CountOf("<td class=", section) == 7 * 48);
  CHECK(CountOf("<td class=\"unknown\" style=\"--likely:0\"", section) == 7 * 48 - 3);
  CHECK(Contains(section,
                 "<td class=\"once\" style=\"--likely:100\" title=\"Mon 12:00 to 12:30: 100 %, "
                 "seen once\"><span class=\"unseen\">100 %, seen once</span></td>"));
  CHECK(Contains(section,
                 "<td class=\"often\" style=\"--likely:0\" title=\"Sat 12:00 to 12:30: "
                 "0 %, seen 5 times\">"));
  CHECK(Contains(section, "<td class=\"some\" style=\"--likely:"));
  CHECK(Contains(section, "title=\"Sun 23:30 to 24:00: not seen yet\""));
  CHECK(Contains(section, "<th scope=\"colgroup\" colspan=\"6\">21</th>"));
  CHECK(Contains(section, "Each bar is 30 minutes: "));
}

TEST_CASE("one Monday is drawn on all working days, and on each of them as seen once") {
  const std::string section = NoonSection(kWeekends);
  CHECK(CountOf("<td class=\"once\"", section) == 5);
  CHECK(CountOf("<td class=\"often\"", section) == 2);
  CHECK(CountOf("<td class=\"some\"", section) == 0);
  CHECK(Contains(section,
                 "</strong> Days that count together: Mon, Tue, Wed, Thu, Fri; and Sat, Sun.</p>"));
}

TEST_CASE("the page says in words how much of the cycle is how sure") {
  CHECK(Contains(NoonSection(kWeekends),
                 "<strong>Of all times of day: 1 % seen 5 times or more, 1 % seen once, 98 % not "
                 "seen yet.</strong>"));
}

TEST_CASE("each kind of certainty has its place in the legend") {
  CHECK(Between(NoonSection(kAlone), "<ul class=\"legend\">", "</ul>") ==
        LegendEntry("unknown", "not seen yet") + LegendEntry("once", "seen once") +
            LegendEntry("some", "seen 2 to 4 times") +
            LegendEntry("often", "seen 5 times or more"));
}

TEST_CASE("the map is there in numbers too, with equal times of day in a row as one") {
  const std::string section = NoonSection(kAlone);
  CHECK(Contains(section, ListRow("Mon",
                                  "00:00 to 12:00 not seen yet; 12:00 to 12:30 100 %, seen once; "
                                  "12:30 to 24:00 not seen yet")));
  CHECK(Contains(section, ListRow("Tue", "00:00 to 24:00 not seen yet")));
}

TEST_CASE("a map of odd cells labels them with minutes too") {
  fakes::Configurations configuration;
  configuration.values["DaysInCycle"] = "1";
  configuration.values["MinutesInDay"] = "60";
  configuration.timeResolution = 30;
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  const std::string section = LearntSection(tracker).html;
  CHECK(Contains(section, "<th scope=\"colgroup\" colspan=\"6\">00:12</th>"));
  CHECK(Contains(section, "<th scope=\"row\">day 0</th>"));
}

TEST_CASE("the page says that a cycle has no map") {
  fakes::Configurations configuration;
  configuration.values["DaysInCycle"] = "1";
  configuration.values["MinutesInDay"] = "7000";
  configuration.timeResolution = 1000;
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  const std::string section = LearntSection(tracker).html;
  CHECK(Contains(section, "Only a cycle of whole days has a map."));
  CHECK(CountOf("<table", section) == 0);
}

}  // namespace dozewell::report
