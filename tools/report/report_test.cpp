#include "report/report.h"

#include <doctest/doctest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "report/tonight_section.h"
#include "report/why_section.h"
#include "support/mornings.h"
#include "support/text_parts.h"

namespace dozewell::report {
namespace {

constexpr int kRecordedDays = 10;

std::string Page(const std::vector<HistoryRecord>& history, std::vector<std::string> notes = {},
                 int learntDays = kRecordedDays,
                 std::optional<RatesExplanation> rates = std::nullopt) {
  fakes::Configurations configuration = AllDaysAlike();
  configuration.values["StrengthHighRange"] = "60";
  configuration.values["StrengthLowRange"] = "40";
  configuration.values["FirstLastWeightRange"] = "50";
  configuration.values["SecondLastWeightRange"] = "30";
  configuration.values["DayGroupingRange"] = "255";
  configuration.values["WR"] = "50 90";
  configuration.values["Strength"] = "1";
  configuration.values["Predictor"] = rates ? "rates" : "";
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  Learn(tracker, Mornings(learntDays));
  tm now;
  TmFromSeconds(SimTime(kRecordedDays, 9, 3), now);
  return MakeReport(
      {configuration, tracker, history, now, 600, {}, std::move(notes), {}, std::move(rates)});
}

}  // namespace

TEST_CASE("a page has all sections and stands alone") {
  const std::string page = Page(Mornings(kRecordedDays));
  CHECK(page.starts_with("<!DOCTYPE html>\n<html lang=\"en\">\n"));
  CHECK(page.ends_with("</body>\n</html>\n"));
  CHECK(Contains(page, "<title>Dozewell report, Sun 11 Jan 2026</title>"));
  CHECK(Contains(page,
                 "Dozewell report of Sun 11 Jan 2026, 09:03. The history has 20 records, "
                 "from Thu 1 Jan 2026 to Sat 10 Jan 2026."));
  for (const char* const id :
       {"tonight", "learnt", "worth", "why", "walked", "choices", "search", "past"}) {
    CHECK(CountOf(std::string("<section id=\"") + id + "\"", page) == 1);
    CHECK(CountOf(std::string("<a href=\"#") + id + "\">", page) == 1);
  }
  CHECK(CountOf("<article>", page) == 2);
  CHECK(Contains(page, "Strength 1 <span class=\"badge\">chosen</span>"));
  CHECK(Contains(page, "prefers-color-scheme: dark"));
  for (const char* const loading : {"<script", "src=", "url(", "@import", "http:", "https:"}) {
    CHECK_FALSE(Contains(page, loading));
  }
}

TEST_CASE("the same input makes the same page") {
  CHECK(Page(Mornings(kRecordedDays)) == Page(Mornings(kRecordedDays)));
}

TEST_CASE("notes come first and are text") {
  const std::string page = Page({}, {"<b>: ignored", "the feature is off"});
  CHECK(Contains(page,
                 "<p class=\"note\">&lt;b&gt;: ignored</p><p class=\"note\">the feature is "
                 "off</p></header>"));
  CHECK(Contains(page, "Nothing is recorded yet."));
}

TEST_CASE("where rates are the predictor, tonight and why are theirs") {
  const std::vector<HistoryRecord> history = Mornings(kRecordedDays);
  const auto state = std::make_unique<RatesState>();
  CatchUp(*state, history);
  const RatesExplanation rates =
      ExplainRates(*state, WishesOf(state->learnt, 50, true), SimLocalTime(kRecordedDays, 9, 3));
  const std::string page = Page(history, {}, kRecordedDays, rates);
  const char* const note = "<p class=\"note\">The service predicts with rates here. ";
  CHECK(Contains(page, note));
  CHECK(Contains(page, TonightSection(rates).html));
  CHECK(Contains(page, WhySection(rates).html));
  CHECK_FALSE(Contains(Page(history), note));
}

TEST_CASE("a machine without any record has a page that says so, and nothing else") {
  const std::string page = Page({}, {}, 0);
  CHECK(CountOf("<section", page) == 1);
  CHECK(Contains(page, "<h2 id=\"nothing-title\">Nothing is known yet</h2>"));
  CHECK_FALSE(Contains(page, "<nav"));
  CHECK_FALSE(Contains(page, "<table"));
}

TEST_CASE("a history without a sleep that ended has nothing to compare") {
  const std::string page = Page({Mornings(1)[0]}, {}, 1);
  CHECK(Contains(page, "Nothing can be compared yet: the history has no sleep that ended."));
  CHECK_FALSE(Contains(page, "<article"));
  CHECK_FALSE(Contains(page, "In detail"));
}

TEST_CASE("a history that cannot be replayed leaves the rest of the page") {
  std::vector<HistoryRecord> history = Mornings(kRecordedDays);
  history[3].asleep = 7;
  const std::string page = Page(history);
  CHECK(Contains(page, "The history cannot be replayed: "));
  CHECK(Contains(page, "<section id=\"tonight\""));
  CHECK_FALSE(Contains(page, "<section id=\"choices\""));
}

TEST_CASE("records beyond the calendar are dated with its ends") {
  const std::string page = Page({{-1e15, 0, 0}, {1e15, 1, 0}});
  CHECK(Contains(page, "from Thu 1 Jan 1970 to Wed 31 Dec 3000."));
}

}  // namespace dozewell::report
