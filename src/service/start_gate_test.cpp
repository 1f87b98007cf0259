#include "service/start_gate.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "base/file.h"
#include "base/process_flags.h"
#include "controller/engine.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/journal.h"
#include "fakes/machine.h"
#include "fakes/settings_fake.h"
#include "fakes/thread_fake.h"
#include "support/calls.h"

namespace dozewell {
namespace {

// 2026-11-21 8:05:09.
const char* const kStartTimeWritten = "settings: WriteSetting StartTime 1795248309";

const Calls kAttemptsRead = {"settings: ReadSetting TotalAttempts",
                             "settings: ReadSetting CurrentAttempt"};

// A machine that counts attempts, with the feature on.
struct Gate {
  fakes::Machine machine;

  Gate(uint32_t total, uint32_t current) {
    FeatureEnabled = true;
    fakes::settings.current.values[L"TotalAttempts"] = fakes::Number32(total);
    fakes::settings.current.values[L"CurrentAttempt"] = fakes::Number32(current);
  }
  Calls Try() {
    fakes::TakeJournal();
    TryStartController();
    return fakes::TakeJournal();
  }
  fakes::Value Setting(const wchar_t* name) { return fakes::settings.current.values[name]; }
};

Calls Started() { return Joined({kAttemptsRead, {kStartTimeWritten, "thread: start"}}); }
Calls NotStarted() { return Joined({kAttemptsRead, {kStartTimeWritten}}); }

void Throw(const SMEventData*) { throw 42; }

}  // namespace

TEST_CASE("without attempts in the settings nothing is started or written, and that is reported") {
  const std::string report =
      "report 0 TotalAttempts or CurrentAttempt value is not defined in registry...";
  Gate gate(3, 3);
  fakes::settings.current.values.erase(L"TotalAttempts");
  CHECK(gate.Try() == Calls{"settings: ReadSetting TotalAttempts", report});
}

TEST_CASE("without the current attempt nothing is started or written, and that is reported") {
  Gate gate(3, 3);
  fakes::settings.current.values.erase(L"CurrentAttempt");
  CHECK(gate.Try() ==
        Joined({kAttemptsRead,
                {"report 0 TotalAttempts or CurrentAttempt value is not defined in registry..."}}));
  CHECK(fakes::threads.waiting.empty());
}

TEST_CASE("the first attempts only count, and the one after them starts the controller") {
  Gate gate(3, 0);
  for (uint32_t attempt = 1; attempt <= 3; ++attempt) {
    CHECK(gate.Try() == Joined({kAttemptsRead,
                                {kStartTimeWritten, "settings: WriteSetting CurrentAttempt " +
                                                        std::to_string(attempt)}}));
    CHECK(gate.Setting(L"CurrentAttempt") == fakes::Number32(attempt));
    CHECK(fakes::threads.waiting.empty());
    CHECK_FALSE(ControllerStarting);
  }
  CHECK(gate.Try() == Started());
  CHECK(ControllerStarting);
  CHECK_FALSE(ControllerStarted);
  fakes::threads.Run();
  CHECK(ControllerStarted);
  CHECK_FALSE(ControllerStarting);
  CHECK(gate.Setting(L"CurrentAttempt") == fakes::Number32(3));
  CHECK(gate.Setting(L"ServiceFeedback") == fakes::Number32(1));
}

TEST_CASE("attempts are counted without a sign") {
  Gate high(3, 0xFFFFFFFF);
  CHECK(high.Try() == Started());
  Gate low(0xFFFFFFFF, 3);
  CHECK(low.Try().back() == "settings: WriteSetting CurrentAttempt 4");
}

TEST_CASE("a total of 0 starts the controller at once") {
  Gate gate(0, 0);
  CHECK(gate.Try() == Started());
}

TEST_CASE("attempts come from the fallback keys, too, and are counted in Current") {
  Gate gate(0, 0);
  fakes::settings.current.values.clear();
  fakes::settings.branding.values[L"TotalAttempts"] = fakes::Number32(2);
  fakes::settings.defaults.values[L"CurrentAttempt"] = fakes::Number32(1);
  CHECK(gate.Try().back() == "settings: WriteSetting CurrentAttempt 2");
  CHECK(gate.Try() == Started());
  CHECK(fakes::settings.defaults.values[L"CurrentAttempt"] == fakes::Number32(1));
}

TEST_CASE("the start time is cut to 32 bits") {
  Gate gate(0, 0);
  fakes::clock.utcSeconds = 0x123456789;
  gate.Try();
  CHECK(gate.Setting(L"StartTime") == fakes::Number32(0x23456789));
}

TEST_CASE("with the feature off attempts count, but nothing is started") {
  Gate gate(1, 0);
  FeatureEnabled = false;
  CHECK(gate.Try().back() == "settings: WriteSetting CurrentAttempt 1");
  CHECK(gate.Try() == NotStarted());
  CHECK_FALSE(ControllerStarting);
}

TEST_CASE("a controller that runs or is being started is not started again") {
  Gate gate(0, 0);
  ControllerStarted = true;
  CHECK(gate.Try() == NotStarted());
  CHECK_FALSE(ControllerStarting);
  ControllerStarted = false;
  CHECK(gate.Try() == Started());
  CHECK(gate.Try() == NotStarted());
  CHECK(fakes::threads.waiting.size() == 1);
}

TEST_CASE("without a thread the next attempt tries again") {
  Gate gate(0, 0);
  fakes::threads.failer.firstFailing = 1;
  CHECK(gate.Try() == Started());
  CHECK_FALSE(ControllerStarting);
  CHECK(gate.Try() == Started());
  CHECK(ControllerStarting);
  CHECK(fakes::threads.waiting.size() == 1);
}

TEST_CASE("a start is fed back only where nothing was fed back before") {
  struct Row {
    bool inFallback;
    uint32_t value;
    bool written;
  };
  for (const Row& row : {Row{false, 0, true},
                         {false, 1, false},
                         {false, 2, false},
                         {true, 0, true},
                         {true, 3, false}}) {
    Gate gate(0, 0);
    fakes::Key& key = row.inFallback ? fakes::settings.defaults : fakes::settings.current;
    key.values[L"ServiceFeedback"] = fakes::Number32(row.value);
    gate.Try();
    fakes::TakeJournal();
    fakes::threads.Run();
    CHECK(ControllerStarted);
    const Calls calls = fakes::TakeJournal();
    CHECK(calls.back() == (row.written ? "settings: WriteSetting ServiceFeedback 1"
                                       : "settings: ReadSetting ServiceFeedback"));
  }
}

TEST_CASE("a controller that cannot be built is not reported, and a later attempt builds it") {
  struct Row {
    const char* name;
    void (*breakIt)(fakes::Machine&);
  };
  const Row rows[] = {
      {"no values", [](fakes::Machine&) { fakes::settings.defaults = {}; }},
      {"no folder", [](fakes::Machine&) { fakes::settings.dataFolder.clear(); }},
      {"a data file of another version",
       [](fakes::Machine& machine) {
         engine.configurations = std::make_unique<ConfigurationsImpl>();
         engine.historian = std::make_unique<HistorianImpl>();
         engine.RenewPredictor();
         engine.historian->NotifyListener({{}, ContainerStopped});
         engine.predictor.reset();
         auto bytes = ReadWholeFile(machine.DataFile()).value();
         bytes[0] = 1;
         REQUIRE(WriteWholeFile(machine.DataFile(), bytes.data(), bytes.size()));
       }},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    Gate gate(0, 0);
    const fakes::Key defaults = fakes::settings.defaults;
    const std::wstring folder = fakes::settings.dataFolder;
    row.breakIt(gate.machine);
    gate.Try();
    fakes::threads.Run();
    for (const std::string& call : fakes::TakeJournal()) {
      CHECK_FALSE(call.starts_with("report"));
      CHECK_FALSE(call.starts_with("trace"));
      CHECK_FALSE(call.starts_with("settings: WriteSetting ServiceFeedback"));
    }
    CHECK_FALSE(ControllerStarted);
    CHECK_FALSE(ControllerStarting);
    CHECK(StateMachine == nullptr);
    CHECK(engine.configurations == nullptr);
    CHECK(engine.historian == nullptr);
    CHECK(engine.predictor == nullptr);

    fakes::settings.defaults = defaults;
    fakes::settings.dataFolder = folder;
    RemoveFile(gate.machine.DataFile());
    CHECK(gate.Try() == Started());
    fakes::threads.Run();
    CHECK(ControllerStarted);
    CHECK(gate.Setting(L"ServiceFeedback") == fakes::Number32(1));
  }
}

TEST_CASE("what the first event's actions throw ends with the start thread") {
  Gate gate(0, 0);
  StateMachine = new SleepStateMachine;
  StateMachine->AH_LogEvent = Throw;
  gate.Try();
  CHECK_NOTHROW(fakes::threads.Run());
  CHECK_FALSE(ControllerStarted);
  CHECK_FALSE(ControllerStarting);
  CHECK(StateMachine->current == SMState::Uninitialized);
  CHECK_FALSE(fakes::settings.current.values.contains(L"ServiceFeedback"));

  StateMachine->AH_LogEvent = nullptr;
  gate.Try();
  fakes::threads.Run();
  CHECK(ControllerStarted);
  CHECK(StateMachine->current == SMState::Active);
}

}  // namespace dozewell
