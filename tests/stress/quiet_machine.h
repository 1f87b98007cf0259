#ifndef DOZEWELL_TESTS_STRESS_QUIET_MACHINE_H_
#define DOZEWELL_TESTS_STRESS_QUIET_MACHINE_H_

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace dozewell::quiet {

// Stands in for the leaves, for many threads at once, and keeps nothing but counts. It has the
// settings of a predictor, a driver whose timer expires now and then, and one power scheme. Its
// clock is in quiet_clock.cpp.

// How far the clock goes on whenever it is read, in seconds.
inline constexpr int64_t kClockStep = 420;

// The data folder. Set before any thread runs.
extern std::wstring dataFolder;

// The values of Predictor, which a read takes in turn. Set before any thread runs.
extern std::vector<std::string> predictors;

// The messages in the event log, counted by kind.
struct Messages {
  std::atomic<int> events{0};  // of any kind
  std::atomic<int> undefinedEvents{0};
  std::atomic<int> searches{0};              // that ended
  std::atomic<int> searchesStopped{0};       // that were asked to end
  std::array<std::atomic<int>, 5> states{};  // entered: Active, the two spikes, Suspended, Off
};
extern Messages messages;

// Threads that were put to sleep by the controller.
extern std::atomic<int> suspends;

}  // namespace dozewell::quiet

#endif  // DOZEWELL_TESTS_STRESS_QUIET_MACHINE_H_
