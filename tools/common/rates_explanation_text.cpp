#include "common/day_names.h"
#include "common/format_text.h"
#include "common/rates_explanation.h"

namespace dozewell {
namespace {

std::string DayAndTime(const tm& time) {
  return FormatText("%s %02d:%02d", DayName(time.tm_wday).c_str(), time.tm_hour, time.tm_min);
}

std::string DayAndTime(const tm& suspend, int32_t minutes) {
  tm time = {};
  TmFromSeconds(SecondsFromTm(suspend) + int64_t{minutes} * 60, time);
  return DayAndTime(time);
}

// Returns an hour. Rare ones would be 0.00.
std::string HourlyText(double rate) { return FormatText(rate < 0.01 ? "%.1g" : "%.2f", rate); }

std::string WeightText(const RatesExplanation& explanation) {
  const int32_t weight = explanation.wishes.weight;
  if (weight <= 0) return "A wait weighs nothing, so it hibernates as soon as it may.\n";
  if (weight >= 100) return "Only waits count, so it never hibernates.\n";
  const double hours = explanation.WaitHours();
  return FormatText(
      "A wait weighs as much as %.1f hours asleep: asleep pays above %s returns an hour.\n", hours,
      HourlyText(1 / hours).c_str());
}

std::string RateText(const ExplainedRate& rate) {
  return FormatText("At %s: %s = %s usual x %.2f time away x %.2f time of day\n",
                    DayAndTime(rate.at).c_str(), HourlyText(rate.perHour).c_str(),
                    HourlyText(rate.usual).c_str(), rate.timeAway, rate.timeOfDay) +
         FormatText("  x %.2f weekday x %.2f both together; seen around here (this class,\n",
                    rate.weekday, rate.both) +
         FormatText("  20 minutes to each side, days of its kind): %.1f returns in %.1f h.\n",
                    rate.returnsSeen, rate.hoursSeen);
}

std::string DecisionText(const RatesExplanation& explanation) {
  const auto& [hibernate, second] = explanation.decision;
  if (hibernate == kNeverMinutes) return "Never hibernates.\n";
  std::string text = "Hibernates " + DayAndTime(explanation.at, hibernate);
  if (second) {
    text += ", woken " + DayAndTime(explanation.at, second->wake);
    text += second->hibernate == kNeverMinutes
                ? ", and then stays asleep"
                : ", again at " + DayAndTime(explanation.at, second->hibernate);
  }
  return text + ".\n";
}

}  // namespace

std::string RatesExplanationText(const RatesExplanation& explanation) {
  std::string text =
      FormatText("Suspended %s, learnt from %lld sleep%s.\n", DayAndTime(explanation.at).c_str(),
                 static_cast<long long>(explanation.sleeps), explanation.sleeps == 1 ? "" : "s") +
      WeightText(explanation);
  if (explanation.wishes.isBeginner) {
    text += "Until three sleeps are learnt it stays asleep for an hour at least.\n";
  }
  if (!explanation.wishes.canWake) text += "Nothing can wake it, so no wake is planned.\n";
  for (const ExplainedRate& rate : explanation.rates) text += RateText(rate);
  return text + DecisionText(explanation);
}

}  // namespace dozewell
