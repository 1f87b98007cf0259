#include "report/worth_section.h"

#include <doctest/doctest.h>

#include <optional>
#include <string>

#include "support/text_parts.h"
#include "support/walks.h"

namespace dozewell::report {
namespace {

constexpr int64_t kOwnTimeout = 10800;

std::string WorthOf(const Walk& walk, std::optional<size_t> strength,
                    PredictorKind predictor = PredictorKind::Slots,
                    int64_t userTimeoutSeconds = kOwnTimeout) {
  const WeekSamples samples({}, walk.weeks);
  return WorthSection({walk, samples, strength, predictor, userTimeoutSeconds}).html;
}

std::string Words(const std::string& section) { return Between(section, "</p><p>", "</p>"); }

// The cells of a row of the table.
std::string RowOf(const std::string& name, const std::string& section) {
  return Between(section, "<th scope=\"row\">" + name + "</th>", "</tr>");
}

std::string NumberCells(const char* hours, const char* waits, const char* points) {
  const std::string cell = "<td class=\"number\">";
  return cell + hours + "</td>" + cell + waits + "</td>" + cell + points + "</td>";
}

}  // namespace

TEST_CASE("the worth is told in words") {
  CHECK(Words(WorthOf(ExampleWalk(), 1)) ==
        "<strong>Less power, less waiting.</strong> The service: 21.0 hours asleep and 0 waits; "
        "the user&#39;s own timeout (180 minutes): 60.0 hours and 2 waits. At strength 1 (50 of "
        "100 points for not having to wait, the others for time hibernated): 89.5 points to 45.0, "
        "better by more than chance.");
  CHECK(Contains(Words(WorthOf(ExampleWalk(), 0, PredictorKind::Slots, 0)),
                 "<strong>Less power, as much waiting.</strong> "));
}

TEST_CASE("a difference that may be chance is called so") {
  Walk walk = ExampleWalk();
  for (WalkedChoice& choice : walk.choices) {
    if (choice.kind != WalkedKind::Service) continue;
    choice.weeks[0] = {0, 180000, 2, 0};
    choice.weeks[1] = {180000, 0, 0, 2};
  }
  CHECK(Words(WorthOf(walk, 1)).ends_with("which may be chance, since the ranges overlap."));
  walk.weeks = 1;
  for (WalkedChoice& choice : walk.choices) choice.weeks.pop_back();
  const std::string section = WorthOf(walk, 1);
  CHECK(Words(section).ends_with("from one week, which says nothing of chance."));
  CHECK(CountOf("class=\"range\"", section) == 0);
}

TEST_CASE("a service that did worse is told so") {
  Walk walk = ExampleWalk();
  for (WalkedChoice& choice : walk.choices) {
    if (choice.kind == WalkedKind::Service) choice.weeks = {{180000, 0, 0, 2}, {180000, 0, 0, 2}};
  }
  CHECK(Words(WorthOf(walk, 1)).ends_with("worse by more than chance."));
}

TEST_CASE("the page says what the comparison rests on") {
  CHECK(Contains(WorthOf(ExampleWalk(), 1),
                 "4 recorded sleeps in 2 weeks, each decided from what came before it alone, with "
                 "3 searches on the way (1 cut short by a suspend). Ranges: 95 of 100 draws of the "
                 "same weeks."));
}

TEST_CASE("the table compares the machine's own predictor, with its wakes and without") {
  const std::string slots = WorthOf(ExampleWalk(), 1);
  CHECK(RowOf("the user&#39;s own, 180 minutes", slots) ==
        NumberCells("60.0", "2", "45.0 <span class=\"range\">(45.0 to 45.0)</span>"));
  CHECK(RowOf("timeout chosen on the past", slots) ==
        NumberCells("62.0", "2", "44.0 <span class=\"range\">(44.0 to 44.0)</span>"));
  CHECK(RowOf("the service, with wakes", slots) ==
        NumberCells("21.0", "0", "89.5 <span class=\"range\">(89.5 to 89.5)</span>"));
  CHECK(RowOf("the service, without wakes", slots) ==
        NumberCells("23.0", "4", "38.5 <span class=\"range\">(38.5 to 38.5)</span>"));
  CHECK(RowOf("best possible", slots) ==
        NumberCells("1.0", "0", "99.5 <span class=\"range\">(99.5 to 99.5)</span>"));
  CHECK(CountOf("<tr class=\"chosen\"><th scope=\"row\">the service, with wakes", slots) == 1);
  const std::string rates = WorthOf(ExampleWalk(), 1, PredictorKind::Rates);
  CHECK(RowOf("the service, with wakes", rates) ==
        NumberCells("11.0", "0", "94.5 <span class=\"range\">(94.5 to 94.5)</span>"));
  CHECK(RowOf("the service, without wakes", rates) ==
        NumberCells("13.0", "2", "68.5 <span class=\"range\">(68.5 to 68.5)</span>"));
}

TEST_CASE("without a strength the settings are compared, without points") {
  const std::string section = WorthOf(ExampleWalk(), std::nullopt);
  CHECK(RowOf("these settings", section) == NumberCells("30.0", "2", "none"));
  CHECK(Words(section).ends_with("(180 minutes): 60.0 hours and 2 waits."));
  CHECK_FALSE(Contains(section, "chosen on the past"));
}

TEST_CASE("the page says why nothing can be compared") {
  CHECK(Contains(TooShortSection().html,
                 "Nothing can be compared yet: the history has no sleep that ended."));
  CHECK(Contains(BrokenSection("a <reason>").html,
                 "The history cannot be replayed: a &lt;reason&gt;."));
}

}  // namespace dozewell::report
