#ifndef DOZEWELL_OPTIMIZER_SIMULATOR_SIM_TIME_LINE_H_
#define DOZEWELL_OPTIMIZER_SIMULATOR_SIM_TIME_LINE_H_

#include <cstdint>
#include <deque>

namespace dozewell {

// The states of a simulated machine. Their numbers appear in the tool's output.
enum class SimState : int32_t {
  Active = 0,
  Limbo = 1,
  Asleep = 2,
  Hibernating = 3,           // recorded, or by a fixed timeout
  PredictedHibernation = 5,  // scheduled by a prediction
  PredictedWakeBack = 6,     // from hibernation to sleep, scheduled by a prediction
};

constexpr bool IsPredicted(SimState state) {
  return state == SimState::PredictedHibernation || state == SimState::PredictedWakeBack;
}

struct SimEvent {
  int64_t time;  // wall-clock seconds
  SimState state;

  bool operator==(const SimEvent&) const = default;
};

using SimTimeLine = std::deque<SimEvent>;

// What a simulated machine did over a time line.
struct Outcomes {
  int64_t sleepSeconds = 0;
  int64_t hibernateSeconds = 0;
  int32_t resumesFromSleep = 0;
  int32_t resumesFromHibernate = 0;

  Outcomes& operator+=(const Outcomes& other);
  bool operator==(const Outcomes&) const = default;
};

// Adds the outcomes of a time line. Time counts from one entry to the next, so the state that the
// last entry begins counts for nothing.
void CountOutcomes(const SimTimeLine& timeLine, Outcomes& outcomes);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_SIMULATOR_SIM_TIME_LINE_H_
