#ifndef DOZEWELL_TESTS_STRESS_QUIET_MACHINE_H_
#define DOZEWELL_TESTS_STRESS_QUIET_MACHINE_H_

#include <array>
#include <atomic>
#include <cstddef>
#include <string>

namespace dozewell::quiet {

// A machine for the leaves to stand on that every thread may use at once and that keeps no record
// but counts: it knows a predictor's settings, a driver whose timer expires now and then, and one
// power scheme, and its clock goes on by some minutes whenever it is read.

// Where learnt data goes. Set before any thread runs.
extern std::wstring dataFolder;

// Messages that the event log was given, by kind.
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
