#include "service/service_main.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "base/process_flags.h"
#include "controller/engine.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/driver_fake.h"
#include "fakes/journal.h"
#include "fakes/machine.h"
#include "fakes/service_fake.h"
#include "fakes/settings_fake.h"
#include "fakes/thread_fake.h"
#include "power/driver_device.h"
#include "service/control_handler.h"
#include "service/service_host.h"
#include "service/service_status.h"
#include "support/calls.h"
#include "support/captured_output.h"

namespace dozewell {
namespace {

// A machine on which the gate is open.
struct Service {
  fakes::Machine machine;

  Service() {
    fakes::settings.current.values[L"TotalAttempts"] = fakes::Number32(0);
    fakes::settings.current.values[L"CurrentAttempt"] = fakes::Number32(0);
    fakes::service.whileListening = [] { ServiceCtrlHandler(kControlStop, 0, nullptr); };
  }
  Calls Run() {
    fakes::TakeJournal();
    OutputOf(ServiceMain);
    return fakes::TakeJournal();
  }
};

const Calls kRegistered = {"service: register handler"};
const Calls kSettingsRead = {"settings: ReadSetting EnableZ7Feature",
                             "settings: ReadSetting DebugLogging",
                             "service: register notification"};
const Calls kGateRead = {"settings: ReadSetting TotalAttempts",
                         "settings: ReadSetting CurrentAttempt",
                         "settings: WriteSetting StartTime 1795248309"};
const Calls kThreadStarted = {"thread: start"};
const Calls kUp = {"driver: open", "service: status 4 0"};
const Calls kServing = {"service: use endpoint",
                        "service: register interface",
                        "service: register authentication",
                        "service: listen",
                        "settings: WriteSetting ServiceStatus 0",
                        "service: wait"};
const Calls kStopControl = {"service: stop listening", "service: status 3 0"};
const Calls kDown = {"service: status 3 3000", "service: unregister notification", "driver: close",
                     "settings: WriteSetting ServiceStatus 1", "service: status 1 0"};

}  // namespace

TEST_CASE("the service comes up, serves until it is stopped, and goes down, step by step") {
  Service service;
  CHECK(service.Run() == Joined({kRegistered, kSettingsRead, kGateRead, kThreadStarted, kUp,
                                 kServing, kStopControl, kDown}));
  CHECK(DriverHandle == nullptr);
  CHECK(fakes::settings.current.values[L"ServiceStatus"] == fakes::Number32(1));
}

TEST_CASE("a running service has announced itself") {
  Service service;
  CHECK(OutputOf(ServiceMain) == "RPC server is listening...\n");
}

TEST_CASE("without a control handler there is no service") {
  Service service;
  fakes::service.failer.firstFailing = 1;
  fakes::service.error = 1063;
  CHECK(service.Run() ==
        Calls{"service: register handler", "report 1 RegisterServiceCtrlHandler failed 1063\n"});
}

TEST_CASE("until it runs the service answers that it is starting") {
  Service service;
  SetServiceState(kServicePaused, 17);
  fakes::service.failer.firstFailing = 1;
  service.Run();
  fakes::service.registered = true;
  ServiceCtrlHandler(kControlInterrogate, 0, nullptr);
  CHECK(fakes::TakeJournal() == Calls{"service: status 2 0"});
}

TEST_CASE("each status that cannot be sent is reported and the next step follows") {
  // The calls of the service's host: handler, notification, running, four of the RPC server's
  // set-up, wait, stop listening, the handler's status, stop pending, notification, stopped.
  struct Row {
    int failing;
    const char* behind;
    const char* report;
  };
  const Row rows[] = {
      {3, "service: status 4 0", "report 1 SetServiceStatus failed, error code = 5\n"},
      {10, "service: status 3 0", "report 1 SetServiceStatus error 5\n"},
      {11, "service: status 3 3000", "report 1 SetServiceStatus failed, error code = 5\n"},
      {13, "service: status 1 0", "report 1 SetServiceStatus failed, error code = 5\n"},
  };
  for (const Row& row : rows) {
    Service service;
    Calls expected = service.Run();
    const auto place = std::find(expected.begin(), expected.end(), row.behind);
    REQUIRE(place != expected.end());
    expected.insert(place + 1, row.report);

    Service failing;
    fakes::service.failer.firstFailing = row.failing;
    CHECK(failing.Run() == expected);
  }
}

TEST_CASE("a notification that could not be registered is unregistered all the same") {
  Service service;
  fakes::service.failer.firstFailing = 2;
  Calls down = kDown;
  down[1] = "service: unregister no notification";
  CHECK(service.Run() == Joined({kRegistered, kSettingsRead, kGateRead, kThreadStarted, kUp,
                                 kServing, kStopControl, down}));
}

TEST_CASE("a machine without the driver's device runs, and nothing is reported or closed") {
  Service service;
  fakes::driver.present = false;
  Calls down = kDown;
  down.erase(down.begin() + 2);
  void* whileServing = &service;
  fakes::service.whileListening = [&] {
    whileServing = DriverHandle;
    ServiceCtrlHandler(kControlStop, 0, nullptr);
  };
  CHECK(service.Run() == Joined({kRegistered, kSettingsRead, kGateRead, kThreadStarted, kUp,
                                 kServing, kStopControl, down}));
  CHECK(whileServing == nullptr);
}

TEST_CASE("an RPC server that cannot be set up has the service stop itself") {
  const std::pair<int, const char*> rows[] = {
      {4, "report 1 RpcServerUseProtseqEp returned 0x5\n"},
      {5, "report 1 RpcServerRegisterIf returned 0x5\n"},
      {6, "report 1 StartRPCServer: RpcServerRegisterAuthInfo() failed!"},
      {7, "report 1 RpcServerListen returned: 0x5\n"},
  };
  for (const auto& [failing, report] : rows) {
    Service service;
    fakes::service.failer.firstFailing = failing;
    CHECK(service.Run() == Joined({kRegistered,
                                   kSettingsRead,
                                   kGateRead,
                                   kThreadStarted,
                                   kUp,
                                   Calls(kServing.begin(), kServing.begin() + failing - 3),
                                   {report},
                                   kDown}));
  }
}

TEST_CASE("feature and debug logging are on only for a setting of 1") {
  struct Row {
    bool isSet;
    uint32_t value;
    bool feature;
    bool debugLogging;
  };
  for (const Row& row : {Row{false, 0, true, false},
                         {true, 0, false, false},
                         {true, 1, true, true},
                         {true, 2, false, false},
                         {true, 0xFFFFFFFF, false, false}}) {
    for (const bool inFallback : {false, true}) {
      Service service;
      fakes::Key& key = inFallback ? fakes::settings.branding : fakes::settings.current;
      if (row.isSet) {
        key.values[L"EnableZ7Feature"] = fakes::Number32(row.value);
        key.values[L"DebugLogging"] = fakes::Number32(row.value);
      }
      bool feature = false;
      bool debugLogging = false;
      fakes::service.whileListening = [&] {
        feature = FeatureEnabled;
        debugLogging = DebugLogging;
      };
      service.Run();
      CHECK(feature == row.feature);
      CHECK(debugLogging == row.debugLogging);
      CHECK(fakes::threads.waiting.size() == (row.feature ? 1 : 0));
    }
  }
}

TEST_CASE("the controller that the gate started is stopped with the service") {
  Service service;
  SMState state = SMState::Off;
  fakes::service.whileListening = [&] {
    fakes::threads.Run();
    REQUIRE(ControllerStarted);
    ServiceCtrlHandler(kControlStop, 0, nullptr);
    // The controller has done its work but exists until the service goes down.
    CHECK(ControllerStarted);
    state = StateMachine->current;
  };
  service.Run();
  CHECK(state == SMState::Uninitialized);
  CHECK_FALSE(ControllerStarted);
  CHECK(StateMachine == nullptr);
  CHECK(engine.predictor == nullptr);
  CHECK_FALSE(service.machine.HasNoFiles());
}

TEST_CASE("with the feature off at the end the controller is left alone") {
  Service service;
  fakes::service.whileListening = [] {
    fakes::threads.Run();
    FeatureEnabled = false;
  };
  service.Run();
  CHECK(ControllerStarted);
  CHECK(StateMachine != nullptr);
}

TEST_CASE("a stop without a controller posts nothing") {
  Service service;
  fakes::settings.current.values.erase(L"TotalAttempts");
  CHECK(service.Run() ==
        Joined({kRegistered,
                kSettingsRead,
                {"settings: ReadSetting TotalAttempts",
                 "report 0 TotalAttempts or CurrentAttempt value is not defined in registry..."},
                kUp,
                kServing,
                kStopControl,
                kDown}));
}

TEST_CASE("starts that only count bring the service up without a controller") {
  Service service;
  fakes::settings.current.values[L"TotalAttempts"] = fakes::Number32(3);
  for (uint32_t start = 1; start <= 3; ++start) {
    CHECK(service.Run() ==
          Joined({kRegistered,
                  kSettingsRead,
                  kGateRead,
                  {"settings: WriteSetting CurrentAttempt " + std::to_string(start)},
                  kUp,
                  kServing,
                  kStopControl,
                  kDown}));
  }
  fakes::service.whileListening = [] { fakes::threads.Run(); };
  service.Run();
  CHECK(fakes::settings.current.values[L"ServiceFeedback"] == fakes::Number32(1));
}

TEST_CASE("a controller that is quicker than the service has started before the device is open") {
  Service service;
  fakes::threads.atOnce = true;
  const Calls calls = service.Run();
  const auto place = [&calls](const char* call) {
    return std::find(calls.begin(), calls.end(), call) - calls.begin();
  };
  CHECK(place("report 4 Active") < place("driver: open"));
  CHECK(place("driver: open") < place("service: status 4 0"));
}

TEST_CASE("in a console there is no handler, so no notification, and every status report fails") {
  Service service;
  ConsoleMode = true;
  fakes::service.whileListening = [] { CHECK(ConsoleCtrlHandler(0)); };
  const Calls failed = {"report 1 SetServiceStatus failed, error code = 6\n"};
  const Calls stopPending(kDown.begin(), kDown.begin() + 1);
  Calls rest(kDown.begin() + 1, kDown.end());
  rest[0] = "service: unregister no notification";
  CHECK(service.Run() == Joined({kSettingsRead,
                                 kGateRead,
                                 kThreadStarted,
                                 kUp,
                                 failed,
                                 kServing,
                                 kStopControl,
                                 {"report 1 SetServiceStatus error 6\n"},
                                 stopPending,
                                 failed,
                                 rest,
                                 failed}));
}

TEST_CASE("settings that cannot be written are not reported") {
  Service service;
  const Calls expected = service.Run();
  Service failing;
  // All but the reads of the gate's attempts, which come third and fourth.
  fakes::settings.failer = {.firstFailing = 5, .failures = 100};
  CHECK(failing.Run() == expected);
  CHECK_FALSE(fakes::settings.current.values.contains(L"ServiceStatus"));
}

}  // namespace dozewell
