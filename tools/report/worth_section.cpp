#include "report/worth_section.h"

#include <string>

#include "common/hours_text.h"
#include "common/html.h"
#include "common/text.h"
#include "report/figure_text.h"

namespace dozewell::report {
namespace {

constexpr const char* kWorthId = "worth";
constexpr const char* kWorthTitle = "What it was worth";

const char* Compared(int64_t value, int64_t with, const char* less, const char* same,
                     const char* more) {
  if (value == with) return same;
  return value < with ? less : more;
}

std::string Verdict(const Outcomes& predicted, const Outcomes& fixed) {
  return std::string(Compared(predicted.sleepSeconds, fixed.sleepSeconds, "Less power",
                              "As much power", "More power")) +
         ", " +
         Compared(predicted.resumesFromHibernate, fixed.resumesFromHibernate, "less waiting",
                  "as much waiting", "more waiting") +
         ".";
}

std::string Summary(const Outcomes& predicted, const Outcomes& fixed, int64_t timeoutSeconds) {
  return "Next to " + TimeoutText(timeoutSeconds) + ", it was asleep for " +
         HoursText(predicted.sleepSeconds) + " hours instead of " + HoursText(fixed.sleepSeconds) +
         ". It was ready at once " + CountText(predicted.resumesFromSleep, "time", "times") +
         " instead of " + std::to_string(fixed.resumesFromSleep) + ", and its user had to wait " +
         CountText(predicted.resumesFromHibernate, "time", "times") + " instead of " +
         std::to_string(fixed.resumesFromHibernate) + ".";
}

}  // namespace

Section WorthSection(const Comparison& comparison, int64_t hibernateAfterSeconds) {
  const Outcomes& predicted = comparison.settings.outcomes;
  const Outcomes& fixed = comparison.baseline;
  return MakeSection(
      kWorthId, kWorthTitle, "The recorded history, replayed with these settings.",
      HtmlElement("p", HtmlElement("strong", Verdict(predicted, fixed)) + " " +
                           HtmlText(Summary(predicted, fixed, hibernateAfterSeconds))));
}

Section TooShortSection() {
  return MakeSection(kWorthId, kWorthTitle,
                     "Nothing can be compared yet: the history has no sleep that ended.", "");
}

Section BrokenSection(std::string_view why) {
  return MakeSection(kWorthId, kWorthTitle,
                     "The history cannot be replayed: " + std::string(why) + ".", "");
}

}  // namespace dozewell::report
