#ifndef DOZEWELL_TESTS_FAKES_NIGHT_CALLS_H_
#define DOZEWELL_TESTS_FAKES_NIGHT_CALLS_H_

#include <string>

#include "support/calls.h"

namespace dozewell::fakes {

// The journal's lines for parts of a night.

// How events and states are reported.

inline Calls Told(const std::string& label, const std::string& text) {
  return {"trace " + label, "trace " + text, "trace \n", "report 4 " + text};
}
inline Calls Event(const std::string& text) { return Told("State Machine event: ", text); }
inline Calls NewState(const std::string& state) { return Told("State Machine new state: ", state); }
inline Calls UndefinedEvent(const std::string& state, const std::string& event) {
  const std::string text = "State Machine Error: State: " + state + ", Undefined event: " + event;
  return Joined({Event(event), {"report 1 " + text, "trace " + text}});
}
inline Calls Decided(const std::string& label, const std::string& text) {
  return {"report 4 Predicted " + label + text, "trace Predicted " + label + text};
}

// The calls that each guard makes.
inline Calls GoingToS3(const std::string& status, const std::string& answer) {
  return {"trace GImpl_GoingToS3: ", "driver: read timer", "driver: read previous sleep status",
          "report 4 GetPreviousSleepStatus " + status + "\n", "trace " + answer + "\n"};
}
inline Calls GoingToS4(const std::string& seconds, const std::string& ha,
                       const std::string& answer) {
  return {"trace GImpl_GoingToS4: ",
          "power: power source",
          "power: get active",
          "power: read balanced AC hibernate",
          "driver: read previous sleep status",
          "trace " + answer + "\n",
          "trace SuspendDuration = " + seconds + " sec, HA = " + ha + " sec\n"};
}
inline Calls RealActivate() { return {"trace GImpl_RealActivate\n"}; }

inline Calls Cached(const std::string& source, const std::string& minutes) {
  return {"power: get active", "power: read balanced " + source + " hibernate",
          "settings: WriteSetting HA_" + source + " " + minutes};
}
inline Calls Set(const std::string& source, const std::string& seconds) {
  return {"power: get active", "power: write balanced " + source + " hibernate " + seconds,
          "power: activate balanced"};
}
inline Calls Armed(const std::string& minutes, const std::string& word) {
  return {"trace HW Timer Duration = " + minutes + " min\n", "driver: read timer",
          "driver: write timer 00000000 " + word};
}

inline const Calls kOptimizerLaunched = {"thread: start", "report 4 Launch optimizer thread, 1\n"};
inline const Calls kStatusSent = {"service: status 4 0"};
// The calls that building a predictor makes, with a data file that is loaded and without one.
inline const Calls kLoaded = {"settings: GetDataFolder", "settings: ReadSetting TimeResolution"};
inline const Calls kBuilt = {"settings: GetDataFolder", "settings: ReadSetting TimeResolution",
                             "settings: ReadSetting TimeResolution"};

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_NIGHT_CALLS_H_
