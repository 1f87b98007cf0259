#include "optimizer/simulator/sim_time_line.h"

#include <cstddef>

#include "base/numbers.h"

namespace dozewell {

Outcomes& Outcomes::operator+=(const Outcomes& other) {
  sleepSeconds = WrapAdd64(sleepSeconds, other.sleepSeconds);
  hibernateSeconds = WrapAdd64(hibernateSeconds, other.hibernateSeconds);
  resumesFromSleep += other.resumesFromSleep;
  resumesFromHibernate += other.resumesFromHibernate;
  return *this;
}

void CountOutcomes(const SimTimeLine& timeLine, Outcomes& outcomes) {
  for (size_t i = 1; i < timeLine.size(); ++i) {
    const SimEvent& previous = timeLine[i - 1];
    const SimEvent& current = timeLine[i];
    const int64_t seconds = WrapSubtract64(current.time, previous.time);
    const int32_t resumes = current.state == SimState::Active ? 1 : 0;
    switch (previous.state) {
      case SimState::Asleep:
      case SimState::PredictedWakeBack:
        outcomes.sleepSeconds = WrapAdd64(outcomes.sleepSeconds, seconds);
        outcomes.resumesFromSleep += resumes;
        break;
      case SimState::Hibernating:
      case SimState::PredictedHibernation:
        outcomes.hibernateSeconds = WrapAdd64(outcomes.hibernateSeconds, seconds);
        outcomes.resumesFromHibernate += resumes;
        break;
      case SimState::Active:
      case SimState::Limbo:
        break;
    }
  }
}

}  // namespace dozewell
