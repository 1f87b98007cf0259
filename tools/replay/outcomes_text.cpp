#include "replay/outcomes_text.h"

#include <array>
#include <charconv>

namespace dozewell {

std::string OutcomesJson(const Outcomes& outcomes) {
  return "{\"sleepSeconds\":" + std::to_string(outcomes.sleepSeconds) +
         ",\"hibernateSeconds\":" + std::to_string(outcomes.hibernateSeconds) +
         ",\"resumesFromSleep\":" + std::to_string(outcomes.resumesFromSleep) +
         ",\"resumesFromHibernate\":" + std::to_string(outcomes.resumesFromHibernate) + "}";
}

std::string OutcomesText(const Outcomes& outcomes) {
  return "Asleep: " + HoursText(outcomes.sleepSeconds) +
         "\nHibernated: " + HoursText(outcomes.hibernateSeconds) +
         "\nResumes from sleep: " + std::to_string(outcomes.resumesFromSleep) +
         "\nResumes from hibernation: " + std::to_string(outcomes.resumesFromHibernate) + "\n";
}

std::string HoursText(int64_t seconds) {
  constexpr double kSecondsPerHour = 3600;
  constexpr int kDecimals = 1;
  std::array<char, 32> text;  // more than any whole number of 64 bits takes
  const double hours = static_cast<double>(seconds) / kSecondsPerHour;
  const auto result = std::to_chars(text.data(), text.data() + text.size(), hours,
                                    std::chars_format::fixed, kDecimals);
  return std::string(text.data(), result.ptr) + " hours";
}

std::string TimeLineText(const SimTimeLine& timeLine) {
  std::string text;
  for (const SimEvent& event : timeLine) {
    text += std::to_string(event.time) + ' ' + std::to_string(static_cast<int>(event.state)) + '\n';
  }
  return text;
}

}  // namespace dozewell
