#ifndef DOZEWELL_TESTS_FAKES_NIGHT_H_
#define DOZEWELL_TESTS_FAKES_NIGHT_H_

#include <functional>
#include <string>
#include <vector>

#include "support/calls.h"

namespace dozewell::fakes {

// A night in the life of the service, from its start to its stop, on a machine that learnt three
// weeks of use from 8 to 18 o'clock: a suspend, the system's own wake on its way into hibernation,
// the timer's wake and the sleep after it, a real resume, a daily save, a reset. The same things
// happen to the machine in every night, whatever the service does.

// What the service was seen to do at each step, and what is left of the user's timeouts after it.
struct NightStep {
  std::string name;
  Calls calls;
  bool keepsAC = true;
  bool keepsDC = true;
};

// Steps by their names; the first is "up", before anything happens, and the last is "down".
struct Night : std::vector<NightStep> {
  // Throws std::out_of_range for a step that is not in it.
  NightStep& operator[](const std::string& name);
};

// Plays the night on a machine of its own. `prepare` runs before the service starts, `afterStep`
// after each step.
Night PlayNight(
    const std::function<void()>& prepare = [] {},
    const std::function<void(const std::string& step)>& afterStep = [](const std::string&) {});

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_NIGHT_H_
