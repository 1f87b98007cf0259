#include "replay/outcomes_text.h"

#include "common/hours_text.h"

namespace dozewell::replay {

Json OutcomesJson(const Outcomes& outcomes) {
  return {{"sleepSeconds", outcomes.sleepSeconds},
          {"hibernateSeconds", outcomes.hibernateSeconds},
          {"resumesFromSleep", outcomes.resumesFromSleep},
          {"resumesFromHibernate", outcomes.resumesFromHibernate}};
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

Json TimeLineJson(const SimTimeLine& timeLine) {
  Json list = Json::array();
  for (const SimEvent& event : timeLine)
    list.push_back(Json::array({event.time, static_cast<int>(event.state)}));
  return list;
}

}  // namespace dozewell::replay
