#include "report/walked_section.h"

#include <doctest/doctest.h>

#include <optional>
#include <string>

#include "support/text_parts.h"
#include "support/walks.h"

namespace dozewell::report {
namespace {

std::string WalkedOf(std::optional<size_t> strength) {
  const Walk walk = ExampleWalk();
  const WeekSamples samples({}, walk.weeks);
  return WalkedSection({walk, samples, strength, PredictorKind::Slots, 10800}).html;
}

}  // namespace

TEST_CASE("every choice that was walked has a row in its group") {
  const std::string section = WalkedOf(1);
  CHECK(CountOf("<th scope=\"rowgroup\"", section) == 6);
  for (const char* const name :
       {"never", "these settings, without a search", "the timeout that was best until then",
        "with searches, as the service lives", "the same, where nothing can wake", "with a wake",
        "where nothing can wake", "best possible"}) {
    CHECK(CountOf(std::string("<th scope=\"row\">") + name + "</th>", section) == 1);
  }
  CHECK(Contains(Between(section, "Hindsight: the timeout that turned out best", "</tbody>"),
                 "<th scope=\"row\">180 minutes</th>"));
  CHECK(CountOf("<tr class=\"chosen\">", section) == 1);
}

TEST_CASE("without a strength the choices that need one are left out") {
  const std::string section = WalkedOf(std::nullopt);
  CHECK(CountOf("<th scope=\"rowgroup\"", section) == 3);
  CHECK(CountOf("<tr class=\"ch", section) == 2 + 1 + 1);
}

}  // namespace dozewell::report
