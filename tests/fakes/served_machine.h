#ifndef DOZEWELL_TESTS_FAKES_SERVED_MACHINE_H_
#define DOZEWELL_TESTS_FAKES_SERVED_MACHINE_H_

#include <cstdint>
#include <limits>
#include <ostream>

#include "fakes/driver_fake.h"
#include "fakes/journal.h"
#include "fakes/machine.h"
#include "fakes/settings_fake.h"
#include "power/open_driver_device.h"
#include "support/calls.h"

namespace dozewell::fakes {

// A machine whose service has opened the driver and answers clients.
struct ServedMachine : Machine {
  ServedMachine() { OpenDriverDevice(); }
};

// What a procedure answered, and what it asked of the machine.
struct Answer {
  bool answer;
  Calls calls;

  bool operator==(const Answer&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const Answer& answer) {
  return stream << (answer.answer ? "true" : "false") << answer.calls;
}

template <typename Procedure>
Answer Ask(Procedure procedure) {
  TakeJournal();
  const bool answer = procedure();
  return {answer, TakeJournal()};
}

inline const Answer kRefusedUnasked = {false, {}};

inline const Calls kTimerRead = {"driver: read timer"};

inline void SetTimer(uint32_t alarm, uint32_t duration) { driver.timer.words = {alarm, duration}; }

// Leaves nothing from which a predictor could be built.
inline void TakeProvisionsAway() { settings.defaults.predictorValues.clear(); }

// The smallest and the largest number that a client can send.
inline constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
inline constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();

// Enumeration values without a meaning: the largest that a client can send, and some that only a
// hand-written packet carries.
inline constexpr uint32_t kLargestEnum = 0x7FFF;
inline constexpr uint32_t kBeyondEnums[] = {0x8000,     0x8001,     0xFFFF,
                                            0x80000000, 0x80000001, 0xFFFFFFFF};

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_SERVED_MACHINE_H_
