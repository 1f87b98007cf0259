// A night of the whole service, call by call.

#include "fakes/night.h"

#include <doctest/doctest.h>

#include <cstddef>

#include "fakes/night_calls.h"
#include "support/calls.h"

namespace dozewell::fakes {
namespace {

// The night as it should be.
Night Expected() {
  Night night;
  const auto step = [&night](const char* name, const Calls& calls) {
    night.push_back({name, calls});
  };
  step("up", {"service: register handler", "settings: ReadSetting EnableZ7Feature",
              "settings: ReadSetting DebugLogging", "service: register notification",
              "settings: ReadSetting TotalAttempts", "settings: ReadSetting CurrentAttempt",
              "settings: WriteSetting StartTime 1795280399", "thread: start", "driver: open",
              "service: status 4 0", "service: use endpoint", "service: register interface",
              "service: register authentication", "service: listen",
              "settings: WriteSetting ServiceStatus 0", "service: wait"});
  step("start thread", Joined({kLoaded,
                               Event("21/11/2026 17:0:0 - Activating"),
                               {"trace AH_LogEvent\n", "trace AH_RecordHistoryEvent\n",
                                "trace AH_RestoreHA\n", "settings: ReadSetting HA_AC delete",
                                "settings: ReadSetting HA_DC delete", "trace AH_CancelHWTimer\n"},
                               NewState("Active"),
                               {"settings: ReadSetting ServiceFeedback",
                                "settings: WriteSetting ServiceFeedback 1"}}));
  step("suspend",
       Joined({Event("21/11/2026 18:5:0 - Suspend"),
               {"trace AH_RecordHistoryEvent\n", "trace AH_TimeStampEvent\n",
                "trace AH_SetPredictedSettings\n", "trace Now: Sat Nov 21 18:05:00 2026\n",
                "settings: ReadSetting DisablePrediction"},
               Decided("Hibernate at: ", "Sat Nov 21 18:15:00 2026\n"),
               Decided("Sleep restored at: ", "Sun Nov 22 08:00:00 2026\n"),
               Decided("Hibernate next at: ", "Sun Nov 22 18:15:00 2026\n"),
               Cached("AC", "30"),
               Cached("DC", "15"),
               Set("AC", "600"),
               Set("DC", "600"),
               Armed("835", "88000343"),
               {"trace AH_LogEvent\n"},
               NewState("Suspended"),
               kStatusSent}));
  step("system wake",
       Joined({Event("21/11/2026 18:15:0 - Activating"), GoingToS3("4", "false"),
               GoingToS4("600", "600", "true"), NewState("Spike_S3ToS4"), kStatusSent}));
  step("hibernation", Joined({Event("21/11/2026 18:15:10 - Suspend"),
                              {"trace AH_TimeStampEvent\n", "trace AH_RetryPredictedHWTimer\n"},
                              Armed("824", "88000338"),
                              NewState("Suspended"),
                              kStatusSent}));
  step("timer wake", Joined({Event("22/11/2026 8:0:0 - Activating"),
                             GoingToS3("5", "true"),
                             {"trace AH_SetNextPredictedHA\n"},
                             Set("AC", "36900"),
                             Set("DC", "36900"),
                             {"trace AH_ProgramSleep\n", "thread: start"},
                             NewState("Spike_S4ToS3"),
                             kStatusSent}));
  step("sleep thread", {"power: suspend"});
  step("back to sleep", Joined({Event("22/11/2026 8:0:5 - Suspend"),
                                {"trace AH_TimeStampEvent\n"},
                                NewState("Suspended"),
                                kStatusSent}));
  step("resume", Joined({Event("22/11/2026 9:30:0 - Activating"),
                         GoingToS3("0", "false"),
                         GoingToS4("5395", "36900", "false"),
                         RealActivate(),
                         GoingToS3("0", "false"),
                         GoingToS4("5395", "36900", "false"),
                         {"trace AH_RecordHistoryEvent\n", "trace AH_LogEvent\n",
                          "trace AH_RestoreHA\n", "settings: ReadSetting HA_AC delete"},
                         Set("AC", "1800"),
                         {"settings: ReadSetting HA_DC delete"},
                         Set("DC", "900"),
                         {"trace AH_CancelHWTimer\n"},
                         kOptimizerLaunched,
                         NewState("Active"),
                         kStatusSent}));
  // The first launch only starts the clock of the interval.
  step("optimizer thread",
       {"settings: ReadLastOptimizerRun", "settings: ReadSetting OptimizerInterval",
        "settings: WriteLastOptimizerRun 1795339801"});
  step("daily save", Joined({Event("22/11/2026 17:0:1 - Saving"),
                             {"trace AH_SavePredictionData\n"},
                             kLoaded,
                             kStatusSent}));
  step("reset", Joined({Event("22/11/2026 17:10:0 - ResetHistory"),
                        {"trace AH_ResetHistory\n", "settings: GetDataFolder",
                         "settings: WriteSetting ServiceFeedback 1"},
                        kBuilt}));
  step("stop", Joined({Event("22/11/2026 18:0:0 - Uninitializing"),
                       {"trace AH_RecordHistoryEvent\n", "trace AH_SaveHistory\n",
                        "settings: GetDataFolder", "settings: ReadSetting HistoryLimit",
                        "trace AH_PredictorContainerOff\n"},
                       NewState("Uninitialized"),
                       {"service: stop listening", "service: status 3 0"}}));
  step("down", {"service: status 3 3000", "service: unregister notification", "driver: close",
                "settings: WriteSetting ServiceStatus 1", "service: status 1 0"});
  return night;
}

}  // namespace

TEST_CASE("a night, call by call") {
  const Night night = PlayNight();
  const Night expected = Expected();
  REQUIRE(night.size() == expected.size());
  for (size_t i = 0; i < night.size(); ++i) {
    CAPTURE(night.at(i).name);
    CHECK(night.at(i).name == expected.at(i).name);
    CHECK(night.at(i).calls == expected.at(i).calls);
    CHECK(night.at(i).keepsAC);
    CHECK(night.at(i).keepsDC);
  }
}

}  // namespace dozewell::fakes
