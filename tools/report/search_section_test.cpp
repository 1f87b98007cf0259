#include "report/search_section.h"

#include <doctest/doctest.h>

#include <limits>

#include "support/text_parts.h"

namespace dozewell::report {
namespace {

constexpr int64_t kHourSeconds = 3600;

Comparison Example(const BestSet& best) {
  Comparison comparison = {};
  comparison.baseline = {40 * kHourSeconds, 60 * kHourSeconds, 5, 5};
  comparison.sets = 960;
  comparison.best = {best};
  comparison.adopted = {{best.name, best.value, {20 * kHourSeconds, 80 * kHourSeconds, 6, 4}}};
  return comparison;
}

std::string Winner(const BestSet& best, const std::string& strength = "") {
  return Between(SearchSection(Example(best), {10}, strength, 3 * kHourSeconds).html, "<article>",
                 "</article>");
}

}  // namespace

TEST_CASE("a winner has its score, the score that it had to reach, and its parameters") {
  CHECK(Winner({"Best0", "20,10,70,50,30,255", 78.0F, 59.005F}) ==
        "<h3>Strength 0</h3><p>Of 100 points, 10 go by how often it is ready at once and 90 by how "
        "much of its rest it spends hibernated.</p><dl class=\"scores\">"
        "<div><dt>best set</dt><dd><span>78.00</span><i class=\"bar score\" "
        "style=\"width:78.00%\"></i>"
        "</dd></div><div><dt>fixed timeout</dt><dd><span>59.01</span><i class=\"bar\" "
        "style=\"width:59.01%\"></i></dd></div></dl>"
        "<p>The best set scores 78.00 points: ready at once 6 of 10 times, hibernated for 80.0 of "
        "100.0 hours. It is taken because it reaches the 59.01 points of a fixed timeout of 180 "
        "minutes: ready at once 5 of 10 times, hibernated for 60.0 of 100.0 hours.</p>"
        "<p>What was last seen of a time of day counts 20\u00A0%, what was seen before that "
        "10\u00A0% and all that is older 70\u00A0%. Below 30\u00A0% the machine is expected to be "
        "idle, from 50\u00A0% on in use. All days count together.</p>");
}

TEST_CASE("the page says that no set is good enough for a weight") {
  CHECK(
      Contains(Winner({"Best0", "-1", 57.0F, 59.0F}),
               "<p>No set reaches the 59.00 points of a fixed timeout of 180 minutes, so the "
               "service would predict nothing with this strength. The best one scores 57.00.</p>"));
}

TEST_CASE("the page says that a history scores nothing") {
  const std::string winner = Winner({"Best0", "-1", 0.0F, std::numeric_limits<float>::quiet_NaN()});
  CHECK(Contains(winner,
                 "<p>The history has no rest to score, so the service would predict "
                 "nothing with this strength.</p>"));
  CHECK(Contains(winner, "<span>no score</span><i class=\"bar\" style=\"width:0\"></i>"));
}

TEST_CASE("the page says that a result has no parameters") {
  CHECK(Contains(Winner({"Best0", ",,,,,", 0.0F, 0.0F}),
                 "<p>There was no set to try, so the parameters stay as they are.</p>"));
}

TEST_CASE("scores beyond 0 to 100 have no bar") {
  const std::string winner = Winner({"Best0", "-1", -3.0F, 250.0F});
  CHECK(Contains(winner, "<span>-3.00</span><i class=\"bar score\" style=\"width:0\"></i>"));
  CHECK(Contains(winner, "<span>250.00</span><i class=\"bar\" style=\"width:0\"></i>"));
}

TEST_CASE("the strength in the settings is marked") {
  const BestSet best = {"Best0", "-1", 0.0F, 1.0F};
  CHECK(Contains(Winner(best, "0"), "Strength 0 <span class=\"badge\">chosen</span>"));
  CHECK_FALSE(Contains(Winner(best, "1"), "badge"));
}

TEST_CASE("scores of a search are called hindsight") {
  CHECK(Contains(SearchSection(Example({"Best0", "-1", 0.0F, 1.0F}), {10}, "", 600).html,
                 "All scores are hindsight: the sets were chosen by the history that they are "
                 "judged by."));
}

TEST_CASE("without weights nothing is searched for") {
  Comparison comparison = {};
  CHECK(Contains(SearchSection(comparison, {}, "", 600).html,
                 "<p>The settings name no weights (WR), so nothing is searched for.</p>"));
}

}  // namespace dozewell::report
