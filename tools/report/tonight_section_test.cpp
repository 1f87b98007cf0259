#include "report/tonight_section.h"

#include <doctest/doctest.h>

#include "support/mornings.h"
#include "support/text_parts.h"

namespace dozewell::report {
namespace {

// The section that ten days of learning, or fewer, lead to at this hour.
std::string SectionAt(fakes::Configurations& configuration, int days, int64_t hour) {
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  Learn(tracker, Mornings(days));
  return TonightSection(Explain(tracker, SimLocalTime(days, hour, 3)), tracker).html;
}

std::string Facts(const std::string& section) {
  return Between(section, "<dl class=\"facts\">", "</dl>");
}

// What a fact begins with.
std::string Colour(const char* cssClass) {
  return std::string("<div><dt><i class=\"swatch ") + cssClass + "\"></i>";
}

}  // namespace

TEST_CASE("a suspend is told with all that follows from it") {
  fakes::Configurations configuration = AllDaysAlike();
  const std::string section = SectionAt(configuration, 10, 9);
  CHECK(Facts(section) ==
        Colour("hibernated") +
            "Hibernates</dt><dd><strong>Sun 11 Jan, 12:10</strong> "
            "<span>after 3 h 07 min of sleep</span></dd></div>" +
            Colour("woken") +
            "Wakes, to be asleep and ready</dt><dd><strong>Mon 12 Jan, 08:00</strong> "
            "<span>by its timer, after 22 h 57 min</span></dd></div>" +
            Colour("hibernated") +
            "Hibernates again</dt><dd><strong>Mon 12 Jan, 12:10</strong> "
            "<span>if nobody came for 4 h 10 min</span></dd></div>");
  CHECK(Contains(section, "the time of this report, Sun 11 Jan, 09:03, and nobody comes."));
  CHECK(CountOf("<div class=\"strip\"", section) == 7);
}

TEST_CASE("a suspend without a prediction leaves the user's own timeout") {
  fakes::Configurations configuration = AllDaysAlike();
  CHECK(Facts(SectionAt(configuration, 0, 9)) ==
        Colour("hibernated") +
            "Hibernates</dt><dd><strong>by the user&#39;s own timeout</strong> "
            "<span>since nothing is predicted</span></dd></div>");
}

TEST_CASE("a suspend without a predicted use is not followed by a wake") {
  fakes::Configurations configuration = AllDaysAlike();
  configuration.values["StrengthHigh"] = "101";
  CHECK(Facts(SectionAt(configuration, 10, 9)) ==
        Colour("hibernated") +
            "Hibernates</dt><dd><strong>Sun 11 Jan, 12:10</strong> "
            "<span>after 3 h 07 min of sleep</span></dd></div>" +
            Colour("woken") +
            "Wakes by itself</dt><dd><strong>never</strong> "
            "<span>since no use is predicted</span></dd></div>");
}

TEST_CASE("a timeout that stays the same after the wake is not mentioned") {
  fakes::Configurations configuration = AllDaysAlike();
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  Learn(tracker, Mornings(10));
  Explanation explanation = Explain(tracker, SimLocalTime(10, 9, 3));
  explanation.decision.nextHAMinutes.reset();
  CHECK(CountOf("<dt>", Facts(TonightSection(explanation, tracker).html)) == 2);
}

TEST_CASE("rates say tonight when they hibernate and wake, and why they do not wake") {
  RatesExplanation rates = {};
  rates.at = SimLocalTime(10, 22, 0);
  rates.suspend.haMinutes = 3;
  rates.wishes.canWake = true;
  const std::string hibernates = Colour("hibernated") +
                                 "Hibernates</dt><dd><strong>Sun 11 Jan, 22:03</strong> "
                                 "<span>after 3 min of sleep</span></dd></div>" +
                                 Colour("woken") +
                                 "Wakes by itself</dt><dd><strong>never</strong> <span>";
  const char* const end = "</span></dd></div>";
  CHECK(Facts(TonightSection(rates).html) == hibernates + "since a wake would not pay" + end);
  rates.wishes.canWake = false;
  CHECK(Facts(TonightSection(rates).html) == hibernates + "since nothing can wake it" + end);
  CHECK_FALSE(Contains(TonightSection(rates).html, "<div class=\"strip\""));
}

}  // namespace dozewell::report
