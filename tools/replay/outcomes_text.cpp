#include "replay/outcomes_text.h"

#include "common/hours_text.h"

namespace dozewell::replay {

std::string OutcomesJsonMembers(const Outcomes& outcomes) {
  return "\"sleepSeconds\":" + std::to_string(outcomes.sleepSeconds) +
         ",\"hibernateSeconds\":" + std::to_string(outcomes.hibernateSeconds) +
         ",\"resumesFromSleep\":" + std::to_string(outcomes.resumesFromSleep) +
         ",\"resumesFromHibernate\":" + std::to_string(outcomes.resumesFromHibernate);
}

std::string OutcomesJson(const Outcomes& outcomes) {
  return "{" + OutcomesJsonMembers(outcomes) + "}";
}

std::string OutcomesText(const Outcomes& outcomes) {
  return "Asleep: " + HoursText(outcomes.sleepSeconds) +
         " hours\nHibernated: " + HoursText(outcomes.hibernateSeconds) +
         " hours\nResumes from sleep: " + std::to_string(outcomes.resumesFromSleep) +
         "\nResumes from hibernation: " + std::to_string(outcomes.resumesFromHibernate) + "\n";
}

std::string TimeLineText(const SimTimeLine& timeLine) {
  std::string text;
  for (const SimEvent& event : timeLine) {
    text += std::to_string(event.time) + ' ' + std::to_string(static_cast<int>(event.state)) + '\n';
  }
  return text;
}

}  // namespace dozewell::replay
