// A night of the whole service with each call to the system failing in turn: the service goes on
// with the next step and reports what it should, and the user's own timeouts are in force or cached
// wherever the order of the steps allows.

#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "fakes/call_failer.h"
#include "fakes/driver_fake.h"
#include "fakes/event_log_fake.h"
#include "fakes/night.h"
#include "fakes/night_calls.h"
#include "fakes/power_fake.h"
#include "fakes/service_fake.h"
#include "fakes/settings_fake.h"
#include "fakes/thread_fake.h"
#include "support/calls.h"

namespace dozewell::fakes {
namespace {

// The night when nothing fails.
const Night& Undisturbed() {
  static const Night night = PlayNight();
  return night;
}

// Compares step by step, so that only what differs is shown.
void CheckSame(const Night& night, const Night& expected) {
  REQUIRE(night.size() == expected.size());
  for (size_t i = 0; i < night.size(); ++i) {
    CAPTURE(night.at(i).name);
    CHECK(night.at(i).name == expected.at(i).name);
    CHECK(night.at(i).calls == expected.at(i).calls);
  }
}

// Edits of a night.

// Replaces the first occurrence of a sequence of calls.
void Replace(NightStep& step, const Calls& calls, const Calls& replacement) {
  const auto found = std::search(step.calls.begin(), step.calls.end(), calls.begin(), calls.end());
  REQUIRE(found != step.calls.end());
  const auto place = step.calls.erase(found, found + std::ssize(calls));
  step.calls.insert(place, replacement.begin(), replacement.end());
}

void Remove(NightStep& step, const Calls& calls) { Replace(step, calls, {}); }

void Append(NightStep& step, const std::string& call, const Calls& following) {
  Replace(step, {call}, Joined({{call}, following}));
}

// Replaces all calls of the step that come after a call.
void CutAfter(NightStep& step, const std::string& call, const Calls& following) {
  const auto found = std::ranges::find(step.calls, call);
  REQUIRE(found != step.calls.end());
  step.calls.erase(found + 1, step.calls.end());
  step.calls = Joined({step.calls, following});
}

Calls ErrorTraced(const std::string& text) { return {"report 1 " + text, "trace " + text}; }

// A seam to the system, with those of its calls that can fail.
struct Seam {
  CallFailer& (*failer)();
  Calls (*calls)();  // so far
};

const Seam kSettings = {[]() -> CallFailer& { return settings.failer; },
                        [] { return settings.calls; }};
const Seam kPower = {[]() -> CallFailer& { return power.failer; }, [] { return power.calls; }};
const Seam kThreads = {[]() -> CallFailer& { return threads.failer; },
                       [] { return Calls(static_cast<size_t>(threads.failer.calls), "start"); }};
const Seam kService = {[]() -> CallFailer& { return service.failer; },
                       [] { return service.calls; }};
const Seam kDriver = {[]() -> CallFailer& { return driver.failer; },
                      [] {
                        Calls calls = driver.calls;
                        std::erase(calls, "open");
                        std::erase(calls, "close");
                        return calls;
                      }};

// What changes in a night when a call fails. The failure of a call that is in no table changes
// nothing but its own result.
struct Consequence {
  const char* step;
  const char* call;
  int nth;                           // among the same calls of the step; 0 for each of them
  std::function<void(Night&)> edit;  // makes the night of the failure from an undisturbed one
  const char* lost = "";             // the source whose user's timeout is lost by this order
};

struct FailingCall {
  std::string step;
  std::string call;
  int nth;
};

// The calls of a seam in an undisturbed night, in order.
std::vector<FailingCall> CallsOf(const Seam& seam) {
  std::vector<FailingCall> all;
  PlayNight([] {},
            [&](const std::string& step) {
              const std::vector<std::string> calls = seam.calls();
              for (size_t i = all.size(); i < calls.size(); ++i) {
                const auto same = std::ranges::count_if(all, [&](const FailingCall& earlier) {
                  return earlier.step == step && earlier.call == calls[i];
                });
                all.push_back({step, calls[i], static_cast<int>(same) + 1});
              }
            });
  return all;
}

void CheckUsersTimeouts(const Night& night, const std::string& lost) {
  for (const NightStep& step : night) {
    CAPTURE(step.name);
    CHECK((step.keepsAC || lost == "AC"));
    CHECK((step.keepsDC || lost == "DC"));
  }
  CHECK(night.back().keepsAC == (lost != "AC"));
  CHECK(night.back().keepsDC == (lost != "DC"));
}

// Plays the night once for each call of the seam, with that call failing.
void FailEachCall(const Seam& seam, size_t count, const std::vector<Consequence>& consequences) {
  const std::vector<FailingCall> calls = CallsOf(seam);
  REQUIRE(calls.size() == count);
  std::vector<int> used(consequences.size());
  for (size_t i = 0; i < calls.size(); ++i) {
    const FailingCall& failing = calls[i];
    Night expected = Undisturbed();
    std::string lost;
    for (size_t row = 0; row < consequences.size(); ++row) {
      const Consequence& consequence = consequences[row];
      if (consequence.step != failing.step || consequence.call != failing.call ||
          (consequence.nth != 0 && consequence.nth != failing.nth)) {
        continue;
      }
      ++used[row];
      consequence.edit(expected);
      lost = consequence.lost;
    }
    CAPTURE(failing.step);
    CAPTURE(failing.call);
    CAPTURE(failing.nth);
    const Night night = PlayNight([&] { seam.failer().firstFailing = static_cast<int>(i) + 1; });
    CheckSame(night, expected);
    CheckUsersTimeouts(night, lost);
  }
  for (size_t row = 0; row < used.size(); ++row) {
    CAPTURE(consequences[row].step);
    CAPTURE(consequences[row].call);
    CHECK(used[row] > 0);
  }
}

// Replaces all steps from one on with those of another night.
void GoOnAs(Night& night, const char* name, Night other) {
  for (auto step = std::ranges::find(night, name, &NightStep::name); step != night.end(); ++step) {
    step->calls = other[step->name].calls;
  }
}

// A night that begins without a controller, which the next resume starts: the same as on a machine
// that is one attempt short of its total.
void StartsLate(Night& night) {
  GoOnAs(night, "suspend",
         PlayNight([] { settings.current.values[L"CurrentAttempt"] = Number32(2); }));
}

// The start thread ends after the calls that it has made so far.
void FailsToStart(Night& night, const Calls& asked) {
  night["start thread"].calls = asked;
  StartsLate(night);
}

// A night whose predictor knows nothing: the same as with prediction disabled.
void HasNoPrediction(Night& night) {
  GoOnAs(night, "suspend",
         PlayNight([] { settings.current.values[L"DisablePrediction"] = Number32(1); }));
}

// A night in which the AC timeout cannot be set at the suspend: the system's wake then does not
// come at the timeout's end and is a real resume. The same as when another program sets it back.
void WakesForReal(Night& night) {
  GoOnAs(night, "system wake",
         PlayNight([] {},
                   [](const std::string& step) {
                     if (step == "suspend") power.values["balanced AC hibernate"] = 1800;
                   }));
}

// GoingToS4 when the HA is not known; `asked` are the calls up to the one that failed.
Calls UnknownHA(const Calls& asked) {
  return Joined({{"trace GImpl_GoingToS4: "},
                 asked,
                 {"driver: read previous sleep status", "trace false\n",
                  "trace SuspendDuration = 0 sec, HA = 0 sec\n"}});
}
const Calls kSourceAsked = {"power: power source"};
const Calls kSchemeAsked = {"power: power source", "power: get active"};
const Calls kHAAsked = {"power: power source", "power: get active",
                        "power: read balanced AC hibernate"};

// The guard that cannot read the HA answers no. When the guard of the real resume reads it again,
// it answers yes, so the resume is dropped, and the suspend after it is undefined.
std::function<void(Night&)> DropsSystemWake(const Calls& asked) {
  return [asked](Night& night) {
    night["system wake"].calls = Joined(
        {Event("21/11/2026 18:15:0 - Activating"), GoingToS3("4", "false"), UnknownHA(asked),
         RealActivate(), GoingToS3("4", "false"), GoingToS4("600", "600", "true"), kStatusSent});
    night["hibernation"].calls =
        Joined({UndefinedEvent("Suspended", "21/11/2026 18:15:10 - Suspend"), kStatusSent});
  };
}

// The same for the timer's wake, after which the machine is not put back to sleep.
void DropsTimerWake(Night& night) {
  night["timer wake"].calls = Joined({Event("22/11/2026 8:0:0 - Activating"),
                                      GoingToS3("5", "false"), GoingToS4("49490", "600", "false"),
                                      RealActivate(), GoingToS3("5", "true"), kStatusSent});
  night["sleep thread"].calls.clear();
  night["back to sleep"].calls =
      Joined({UndefinedEvent("Suspended", "22/11/2026 8:0:5 - Suspend"), kStatusSent});
  for (int time = 0; time < 2; ++time) {
    Replace(night["resume"], GoingToS4("5395", "36900", "false"),
            GoingToS4("54890", "600", "false"));
  }
}

// A real resume in which one of the two guards cannot read the timeout.
std::function<void(Night&)> ResumesWithout(const Calls& asked, int look) {
  return [asked, look](Night& night) {
    const Calls before = look == 1 ? Calls{} : Joined({RealActivate(), GoingToS3("0", "false")});
    Replace(night["resume"], Joined({before, GoingToS4("5395", "36900", "false")}),
            Joined({before, UnknownHA(asked)}));
  };
}

// A timeout that is not set is reported; `tried` are the calls up to the one that failed.
std::function<void(Night&)> NotSet(const char* step, const Calls& set, const Calls& tried,
                                   const std::string& report) {
  return [=](Night& night) { Replace(night[step], set, Joined({tried, {"report 1 " + report}})); };
}

// The first call of setting a timeout, and the first two.
Calls Got(const Calls& set) { return {set.begin(), set.begin() + 1}; }
Calls Wrote(const Calls& set) { return {set.begin(), set.begin() + 2}; }

std::function<void(Night&)> Both(const std::function<void(Night&)>& one,
                                 const std::function<void(Night&)>& other) {
  return [=](Night& night) {
    one(night);
    other(night);
  };
}

// The source has no cached timeout to restore.
std::function<void(Night&)> NotGivenBack(const char* source) {
  return [=](Night& night) {
    Remove(night["resume"], Set(source, source == std::string("AC") ? "1800" : "900"));
  };
}

// A service whose RPC server cannot be set up stops itself, before anything else happens.
std::function<void(Night&)> NeverServes(const std::string& call, const std::string& report) {
  return [=](Night& night) {
    NightStep up = night["up"];
    CutAfter(up, "service: " + call, {"report 1 " + report});
    NightStep down = night["down"];
    down.calls = Joined({up.calls, down.calls});
    night.assign({down});
  };
}

const char* const kDaysInCycle = "ReadPredictorValue CyclicProbabilityPredictor DaysInCycle";
const char* const kMinutesInDay = "ReadPredictorValue CyclicProbabilityPredictor MinutesInDay";
const char* const kTimeResolution = "ReadSetting TimeResolution";
const char* const kWeights[] = {"ReadPredictorValue CyclicProbabilityPredictor FirstLastWeight",
                                "ReadPredictorValue CyclicProbabilityPredictor SecondLastWeight",
                                "ReadPredictorValue CyclicProbabilityPredictor AgregationWeight"};

}  // namespace

TEST_CASE("an event that finds no source is lost, and nothing else changes") {
  size_t events = 0;
  for (const NightStep& step : Undisturbed()) {
    for (size_t call = 0; call < step.calls.size(); ++call) {
      if (!step.calls[call].starts_with("report ")) continue;
      ++events;
      Night expected = Undisturbed();
      Calls& calls = expected[step.name].calls;
      calls.erase(calls.begin() + static_cast<std::ptrdiff_t>(call));
      CAPTURE(step.name);
      CAPTURE(step.calls[call]);
      const Night night =
          PlayNight([&] { eventLog.openFailer.firstFailing = static_cast<int>(events); });
      CheckSame(night, expected);
      CheckUsersTimeouts(night, "");
    }
  }
  CHECK(events == 26);
}

TEST_CASE("an event that the log refuses clears the log and is tried once more, and no further") {
  for (const int failures : {1, 2}) {
    int events = 0;
    for (const NightStep& step : Undisturbed()) {
      for (size_t call = 0; call < step.calls.size(); ++call) {
        if (!step.calls[call].starts_with("report ")) continue;
        ++events;
        Night expected = Undisturbed();
        Calls& calls = expected[step.name].calls;
        const std::string again[] = {"clear", step.calls[call]};
        calls.insert(calls.begin() + static_cast<std::ptrdiff_t>(call) + 1, std::begin(again),
                     std::end(again));
        CAPTURE(step.name);
        CAPTURE(step.calls[call]);
        const Night night = PlayNight([&] {
          eventLog.reportFailer = {.firstFailing = events, .failures = failures, .calls = 0};
        });
        CheckSame(night, expected);
        CheckUsersTimeouts(night, "");
      }
    }
    CHECK(events == 26);
  }
}

TEST_CASE("each driver call of a night fails, and the rest is as described") {
  FailEachCall(kDriver, 15,
               {
                   // A record that could not be read is not written back.
                   {"suspend", "read timer", 0,
                    [](Night& night) {
                      Remove(night["suspend"], {"driver: write timer 00000000 88000343"});
                    }},
                   {"hibernation", "read timer", 0,
                    [](Night& night) {
                      Remove(night["hibernation"], {"driver: write timer 00000000 88000338"});
                    }},
                   {"system wake", "read previous sleep status", 1,
                    [](Night& night) {
                      Replace(night["system wake"], GoingToS3("4", "false"),
                              GoingToS3("0", "false"));
                    }},
                   {"timer wake", "read timer", 0, DropsTimerWake},
                   {"timer wake", "read previous sleep status", 0,
                    [](Night& night) {
                      Replace(night["timer wake"], GoingToS3("5", "true"), GoingToS3("0", "true"));
                    }},
               });
}

TEST_CASE("each power call of a night fails, and the rest is as described") {
  const std::string passedAC = "Failed to set passed HA value for AC";
  const std::string passedDC = "Failed to set passed HA value for DC";
  const std::string cachedAC = "Failed to set cached HA value for AC";
  const std::string cachedDC = "Failed to set cached HA value for DC";
  const auto notCached = [](const char* source, const char* minutes, const Calls& tried) {
    return Both([=](Night& night) { Replace(night["suspend"], Cached(source, minutes), tried); },
                NotGivenBack(source));
  };
  const auto otherHA = [](Night& night) {
    for (int time = 0; time < 2; ++time) {
      Replace(night["resume"], GoingToS4("5395", "36900", "false"),
              GoingToS4("5395", "600", "false"));
    }
  };
  const Calls ac = Set("AC", "600");
  const Calls dc = Set("DC", "600");
  const Calls nextAC = Set("AC", "36900");
  const Calls nextDC = Set("DC", "36900");
  const Calls userAC = Set("AC", "1800");
  const Calls userDC = Set("DC", "900");
  FailEachCall(
      kPower, 32,
      {
          // A user's timeout that cannot be read is overwritten all the same.
          {"suspend", "get active", 1, notCached("AC", "30", Got(Cached("AC", "30"))), "AC"},
          {"suspend", "read balanced AC hibernate", 0,
           notCached("AC", "30", Wrote(Cached("AC", "30"))), "AC"},
          {"suspend", "get active", 2, notCached("DC", "15", Got(Cached("DC", "15"))), "DC"},
          {"suspend", "read balanced DC hibernate", 0,
           notCached("DC", "15", Wrote(Cached("DC", "15"))), "DC"},
          {"suspend", "get active", 3,
           Both(NotSet("suspend", ac, Got(ac), passedAC), WakesForReal)},
          {"suspend", "write balanced AC hibernate 600", 0,
           Both(NotSet("suspend", ac, Wrote(ac), passedAC), WakesForReal)},
          {"suspend", "get active", 4, NotSet("suspend", dc, Got(dc), passedDC)},
          {"suspend", "write balanced DC hibernate 600", 0,
           NotSet("suspend", dc, Wrote(dc), passedDC)},
          {"system wake", "power source", 0, DropsSystemWake(kSourceAsked)},
          {"system wake", "get active", 0, DropsSystemWake(kSchemeAsked)},
          {"system wake", "read balanced AC hibernate", 0, DropsSystemWake(kHAAsked)},
          {"timer wake", "get active", 1,
           Both(NotSet("timer wake", nextAC, Got(nextAC), passedAC), otherHA)},
          {"timer wake", "write balanced AC hibernate 36900", 0,
           Both(NotSet("timer wake", nextAC, Wrote(nextAC), passedAC), otherHA)},
          {"timer wake", "get active", 2, NotSet("timer wake", nextDC, Got(nextDC), passedDC)},
          {"timer wake", "write balanced DC hibernate 36900", 0,
           NotSet("timer wake", nextDC, Wrote(nextDC), passedDC)},
          {"sleep thread", "suspend", 0,
           [](Night& night) {
             Append(night["sleep thread"], "power: suspend",
                    {"report 0 Failed to move the system to sleep"});
           }},
          {"resume", "power source", 1, ResumesWithout(kSourceAsked, 1)},
          {"resume", "get active", 1, ResumesWithout(kSchemeAsked, 1)},
          {"resume", "read balanced AC hibernate", 1, ResumesWithout(kHAAsked, 1)},
          {"resume", "power source", 2, ResumesWithout(kSourceAsked, 2)},
          {"resume", "get active", 2, ResumesWithout(kSchemeAsked, 2)},
          {"resume", "read balanced AC hibernate", 2, ResumesWithout(kHAAsked, 2)},
          // The cache is emptied before a timeout is restored.
          {"resume", "get active", 3, NotSet("resume", userAC, Got(userAC), cachedAC), "AC"},
          {"resume", "write balanced AC hibernate 1800", 0,
           NotSet("resume", userAC, Wrote(userAC), cachedAC), "AC"},
          {"resume", "get active", 4, NotSet("resume", userDC, Got(userDC), cachedDC), "DC"},
          {"resume", "write balanced DC hibernate 900", 0,
           NotSet("resume", userDC, Wrote(userDC), cachedDC), "DC"},
      });
}

TEST_CASE("each settings call of a night fails, and the rest is as described") {
  const char* const notDefined =
      "report 0 TotalAttempts or CurrentAttempt value is not defined in registry...";
  const auto gateShut = [notDefined](const Calls& notAsked) {
    return [=](Night& night) {
      Replace(night["up"],
              Joined({notAsked, {"settings: WriteSetting StartTime 1795280399", "thread: start"}}),
              {notDefined});
      night["start thread"].calls.clear();
      StartsLate(night);
    };
  };
  const auto blankAtStart = [](Night& night) {
    Replace(night["start thread"], kLoaded, kBuilt);
    HasNoPrediction(night);
  };
  const auto instead = [](const char* step, const Calls& calls, const Calls& others) {
    return [=](Night& night) { Replace(night[step], calls, others); };
  };
  const auto failsToStart = [](const Calls& asked) {
    return [asked](Night& night) { FailsToStart(night, asked); };
  };
  const Calls noFolder = ErrorTraced("invalid string position");
  const Calls noWeights = ErrorTraced("No weigths specified");
  const Calls noCycle =
      ErrorTraced("CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations");
  const Calls noSlots = ErrorTraced("ArbitraryCycleProbabilityTracker - wrong configurations");
  const Calls unevenDay =
      ErrorTraced("Length of day modulus number of minutes within a slot is not zero");
  const Calls folderAsked = {"settings: GetDataFolder"};

  std::vector<Consequence> consequences = {
      {"up", "ReadSetting TotalAttempts", 0, gateShut({"settings: ReadSetting CurrentAttempt"})},
      {"up", "ReadSetting CurrentAttempt", 0, gateShut({})},
      // A predictor that cannot be built at the start is built after the next resume.
      {"start thread", "GetDataFolder", 0, failsToStart(folderAsked)},
      {"start thread", kTimeResolution, 0, failsToStart(kLoaded)},
      // A cycle that cannot be read fits no data file.
      {"start thread", kDaysInCycle, 0, blankAtStart},
      {"start thread", kMinutesInDay, 0, blankAtStart},
      {"start thread", "ReadPredictorValue CyclicProbabilityPredictor StrengthHigh", 0,
       HasNoPrediction},
      {"start thread", "ReadPredictorValue CyclicProbabilityPredictor StrengthLow", 0,
       HasNoPrediction},
      // A user's timeout that cannot be cached is overwritten all the same.
      {"suspend", "WriteSetting HA_AC 30", 0, NotGivenBack("AC"), "AC"},
      {"suspend", "WriteSetting HA_DC 15", 0, NotGivenBack("DC"), "DC"},
      // It stays cached, and the next start restores it.
      {"resume", "ReadSetting HA_AC delete", 0, NotGivenBack("AC")},
      {"resume", "ReadSetting HA_DC delete", 0, NotGivenBack("DC")},
      {"daily save", "GetDataFolder", 0,
       instead("daily save", kLoaded, Joined({folderAsked, noFolder}))},
      {"daily save", kDaysInCycle, 0, instead("daily save", kLoaded, kBuilt)},
      {"daily save", kMinutesInDay, 0, instead("daily save", kLoaded, kBuilt)},
      {"daily save", kTimeResolution, 0,
       instead("daily save", kLoaded, Joined({kLoaded, noCycle}))},
      // The learnt files stay, and the new predictor reads them.
      {"reset", "GetDataFolder", 1, instead("reset", kBuilt, kLoaded)},
      {"reset", "GetDataFolder", 2, instead("reset", kBuilt, Joined({folderAsked, noFolder}))},
      {"reset", kTimeResolution, 1, instead("reset", kBuilt, Joined({kLoaded, noCycle}))},
      {"reset", kTimeResolution, 2, instead("reset", kBuilt, Joined({kBuilt, noSlots}))},
      {"reset", kDaysInCycle, 2, instead("reset", kBuilt, Joined({kBuilt, noSlots}))},
      {"reset", kMinutesInDay, 2, instead("reset", kBuilt, Joined({kBuilt, unevenDay}))},
      {"stop", "GetDataFolder", 0,
       instead("stop", {"settings: GetDataFolder", "settings: ReadSetting HistoryLimit"},
               Joined({folderAsked, noFolder}))},
  };
  for (const char* const weight : kWeights) {
    consequences.push_back({"start thread", weight, 0, failsToStart(kLoaded)});
    consequences.push_back(
        {"daily save", weight, 0, instead("daily save", kLoaded, Joined({kLoaded, noWeights}))});
    consequences.push_back(
        {"reset", weight, 0, instead("reset", kBuilt, Joined({kLoaded, noWeights}))});
  }
  FailEachCall(kSettings, 59, consequences);
}

TEST_CASE("each thread of a night fails, and the rest is as described") {
  FailEachCall(
      kThreads, 3,
      {{"up", "start", 0, [](Night& night) { FailsToStart(night, {}); }},
       {"timer wake", "start", 0, [](Night& night) { night["sleep thread"].calls.clear(); }},
       {"resume", "start", 0, [](Night& night) {
          Replace(night["resume"], {"report 4 Launch optimizer thread, 1\n"},
                  {"report 4 Launch optimizer thread, 0\n"});
          night["optimizer thread"].calls.clear();
        }}});
}

TEST_CASE("each call to the service's host of a night fails, and the rest is as described") {
  const auto told = [](const char* step, const char* call, const char* report) {
    return [=](Night& night) {
      Append(night[step], std::string("service: ") + call, {std::string("report 1 ") + report});
    };
  };
  const char* const notSent = "SetServiceStatus failed, error code = 5\n";
  std::vector<Consequence> consequences = {
      {"up", "register handler", 0,
       [](Night& night) {
         night.assign(
             {{"down",
               {"service: register handler", "report 1 RegisterServiceCtrlHandler failed 5\n"}}});
       }},
      {"up", "register notification", 0,
       [](Night& night) {
         Replace(night["down"], {"service: unregister notification"},
                 {"service: unregister no notification"});
       }},
      {"up", "status 4 0", 0, told("up", "status 4 0", notSent)},
      {"up", "use endpoint", 0,
       NeverServes("use endpoint", "RpcServerUseProtseqEp returned 0x5\n")},
      {"up", "register interface", 0,
       NeverServes("register interface", "RpcServerRegisterIf returned 0x5\n")},
      {"up", "register authentication", 0,
       NeverServes("register authentication",
                   "StartRPCServer: RpcServerRegisterAuthInfo() failed!")},
      {"up", "listen", 0, NeverServes("listen", "RpcServerListen returned: 0x5\n")},
      {"up", "wait", 0, NeverServes("wait", "StartRPCServer: RpcMgmtWaitServerListen() failed!")},
      {"stop", "stop listening", 0,
       [&](Night& night) {
         told("stop", "stop listening",
              "StopRPCServer: RpcMgmtStopServerListening() failed!")(night);
         // The controller has done its work; a second stop reaches the server.
         night.insert(
             night.end() - 1,
             {"second stop",
              Joined({UndefinedEvent("Uninitialized", "22/11/2026 18:0:0 - Uninitializing"),
                      {"service: stop listening", "service: status 3 0"}})});
       }},
      {"stop", "status 3 0", 0, told("stop", "status 3 0", "SetServiceStatus error 5\n")},
      {"down", "status 3 3000", 0, told("down", "status 3 3000", notSent)},
      {"down", "status 1 0", 0, told("down", "status 1 0", notSent)},
  };
  for (const char* const step : {"suspend", "system wake", "hibernation", "timer wake",
                                 "back to sleep", "resume", "daily save"}) {
    consequences.push_back(
        {step, "status 4 0", 0, told(step, "status 4 0", "SetServiceStatus error 5\n")});
  }
  FailEachCall(kService, 20, consequences);
}

}  // namespace dozewell::fakes
