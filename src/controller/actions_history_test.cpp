// What the controller learns, saves and forgets.

#include <doctest/doctest.h>

#include <cstdint>
#include <cstring>
#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/file.h"
#include "controller/actions.h"
#include "controller/engine.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/journal.h"
#include "fakes/lock_fake.h"
#include "fakes/machine.h"
#include "fakes/settings_fake.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "prediction/tracker_data.h"
#include "settings/predictor_values.h"
#include "support/calls.h"
#include "support/local_times.h"

namespace dozewell {
namespace {

using Action = void (*)(const SMEventData*);

constexpr SMEvent kAllEvents[] = {
    SMEvent::Activating,     SMEvent::Suspend, SMEvent::ShuttingDown, SMEvent::ParamChanging,
    SMEvent::Uninitializing, SMEvent::Saving,  SMEvent::ResetHistory};

// Keeps what it is told, and then does what a test wants, such as throwing.
struct Listener : ITimeLineListener, IConfigurationsListener {
  std::vector<TimeLineEvent> events;
  std::vector<std::string> sections;
  std::function<void()> then = [] {};

  void OnTimeLineEvent(const TimeLineEvent& event) override {
    events.push_back(event);
    then();
  }
  void OnConfigurationChanged(std::string section) override {
    sections.push_back(std::move(section));
    then();
  }
};

// A machine with the objects that a started controller has.
struct Learning {
  fakes::Machine machine;

  Learning() {
    engine.configurations = std::make_unique<ConfigurationsImpl>();
    engine.historian = std::make_unique<HistorianImpl>();
    engine.RenewPredictor();
    fakes::TakeJournal();
  }
  // Registers a test's own listener in place of the predictor.
  void Hear(Listener& listener) {
    engine.predictor.reset();
    engine.historian->RegisterListener(&listener);
    engine.configurations->RegisterListener(&listener);
  }
  Calls Run(Action action, SMEvent event) {
    const SMEventData data(event);
    return Run(action, &data);
  }
  Calls Run(Action action, const SMEventData* event) {
    fakes::TakeJournal();
    action(event);
    return fakes::TakeJournal();
  }
  std::vector<unsigned char> Data() { return ReadWholeFile(machine.DataFile()).value(); }
  void SetData(const std::vector<unsigned char>& bytes) {
    REQUIRE(WriteWholeFile(machine.DataFile(), bytes.data(), bytes.size()));
  }
};

Calls ErrorTraced(const std::string& text) { return {"report 1 " + text, "trace " + text}; }

// The calls that building a predictor makes, without a data file and with one that is loaded.
const Calls kPredictorBuilt = {"settings: GetDataFolder", "settings: ReadSetting TimeResolution",
                               "settings: ReadSetting TimeResolution"};
const Calls kPredictorLoaded = {"settings: GetDataFolder", "settings: ReadSetting TimeResolution"};

// The first calls of a parameter change when no best set is stored.
const Calls kNothingApplied = {"settings: WriteSetting DisablePrediction 0",
                               "settings: WriteSetting ServiceFeedback 0",
                               "report 4 Predictor disabled 0\n"};
// All calls of a parameter change that the listener is told.
const Calls kParametersTold = Joined({kNothingApplied, {"trace AH_SetPredictorConfig\n"}});

// The state of the last event before the data file was written.
int32_t LastState(const std::vector<unsigned char>& bytes) {
  TrackerData header;
  REQUIRE(bytes.size() > sizeof(header));
  std::memcpy(&header, bytes.data(), sizeof(header));
  return header.lastState;
}

// The actions that tell the historian's listener, each with an event that it runs on.
struct Telling {
  Action action;
  const char* name;
  SMEvent event;
};
const Telling kTelling[] = {
    {AH_LogEvent, "AH_LogEvent", SMEvent::Suspend},
    {AH_PredictorContainerOff, "AH_PredictorContainerOff", SMEvent::ShuttingDown},
    {AH_SavePredictionData, "AH_SavePredictionData", SMEvent::Saving},
};

}  // namespace

TEST_CASE("the predictor hears of resumes, suspends and shut-downs with their times") {
  Learning learning;
  Listener listener;
  learning.Hear(listener);
  const tm now = LocalTime(2026, 11, 21, 8, 5, 9);
  for (const SMEvent event : kAllEvents) {
    CHECK(learning.Run(AH_LogEvent, event) == Calls{"trace AH_LogEvent\n"});
  }
  REQUIRE(listener.events.size() == 3);
  for (int32_t state = 0; state < 3; ++state) {
    CHECK(listener.events[static_cast<size_t>(state)].state == state);
    CHECK(listener.events[static_cast<size_t>(state)].time == now);
  }
}

TEST_CASE("the predictor hears the event's own time") {
  Learning learning;
  Listener listener;
  learning.Hear(listener);
  const SMEventData event(SMEvent::Suspend);
  fakes::SetTime(LocalTime(2026, 11, 22));
  AH_LogEvent(&event);
  AH_PredictorContainerOff(&event);
  AH_SavePredictionData(&event);
  REQUIRE(listener.events.size() == 3);
  for (const TimeLineEvent& heard : listener.events) {
    CHECK(heard.time == LocalTime(2026, 11, 21, 8, 5, 9));
  }
}

TEST_CASE("the container's end is told on any event, as state 4") {
  Learning learning;
  Listener listener;
  learning.Hear(listener);
  for (const SMEvent event : kAllEvents) {
    CHECK(learning.Run(AH_PredictorContainerOff, event) ==
          Calls{"trace AH_PredictorContainerOff\n"});
  }
  CHECK(listener.events.size() == 7);
  for (const TimeLineEvent& event : listener.events) CHECK(event.state == 4);
}

TEST_CASE("the container's end has the predictor write its file") {
  Learning learning;
  AH_LogEvent(std::make_unique<SMEventData>(SMEvent::Suspend).get());
  CHECK(learning.machine.HasNoFiles());
  AH_PredictorContainerOff(std::make_unique<SMEventData>(SMEvent::ShuttingDown).get());
  CHECK(learning.Data().size() == 16192);
  CHECK(LastState(learning.Data()) == 1);
}

TEST_CASE("without a listener, historian or event nobody is told and nothing fails") {
  for (const Telling& telling : kTelling) {
    CAPTURE(telling.name);
    Learning learning;
    engine.predictor.reset();
    CHECK(learning.Run(telling.action, telling.event).front() ==
          std::string("trace ") + telling.name + "\n");
    CHECK(learning.Run(telling.action, nullptr) == Calls{});
    engine.predictor.reset();
    engine.historian.reset();
    const bool alwaysNamed = telling.action == AH_LogEvent;
    CHECK(learning.Run(telling.action, telling.event) ==
          (alwaysNamed ? Calls{"trace AH_LogEvent\n"} : Calls{}));
  }
}

TEST_CASE("a listener's exception is logged with its message, and the action goes on") {
  for (const Telling& telling : kTelling) {
    CAPTURE(telling.name);
    Learning learning;
    Listener listener;
    listener.then = [] { throw std::runtime_error("not again"); };
    learning.Hear(listener);
    const Calls rebuilt = telling.action == AH_SavePredictionData ? kPredictorBuilt : Calls{};
    CHECK(
        learning.Run(telling.action, telling.event) ==
        Joined({{std::string("trace ") + telling.name + "\n"}, ErrorTraced("not again"), rebuilt}));
  }
}

TEST_CASE("a listener's unknown exception is logged with the action's name and thrown on") {
  for (const Telling& telling : kTelling) {
    CAPTURE(telling.name);
    Learning learning;
    Listener listener;
    listener.then = [] { throw 42; };
    learning.Hear(listener);
    CHECK_THROWS_AS(learning.Run(telling.action, telling.event), int);
    CHECK(fakes::TakeJournal() ==
          Joined({{std::string("trace ") + telling.name + "\n"},
                  ErrorTraced(std::string(telling.name) +
                              ": HistorianObj::NotifyListener threw an unknown exception")}));
    // Above all, the predictor was not renewed.
    CHECK(engine.predictor == nullptr);
  }
}

TEST_CASE("an event out of order, which the tracker refuses, is logged and the rest goes on") {
  Learning learning;
  learning.Run(AH_LogEvent, SMEvent::Activating);
  fakes::SetTime(LocalTime(2026, 11, 21, 8, 5, 8));
  CHECK(learning.Run(AH_LogEvent, SMEvent::Suspend) ==
        Joined({{"trace AH_LogEvent\n"}, ErrorTraced("state start is later than state end")}));
}

TEST_CASE("the listener is told the name of a changed parameter") {
  Learning learning;
  Listener listener;
  learning.Hear(listener);
  const ParamChangeEventData change("Strength");
  CHECK(learning.Run(AH_SetPredictorConfig, &change) == kParametersTold);
  CHECK(listener.sections == std::vector<std::string>{"Strength"});
  CHECK(change.param == "Strength");
}

TEST_CASE("the chosen parameters are applied before the change is told") {
  Learning learning;
  Listener listener;
  std::string applied;
  listener.then = [&] {
    applied = ReadPredictorValue("CyclicProbabilityPredictor", "StrengthHigh");
  };
  learning.Hear(listener);
  for (const auto& [name, text] : {std::pair{"Strength", "1"}, {"Best1", "10,20,70,91,60,2"}}) {
    fakes::settings.current.predictorValues[{"CyclicProbabilityPredictor", name}] =
        fakes::Text(text);
  }
  const ParamChangeEventData change("Strength");
  const Calls calls = learning.Run(AH_SetPredictorConfig, &change);
  REQUIRE(calls.size() == 10);
  CHECK(calls[7] == "settings: WriteSetting ServiceFeedback 2");
  CHECK(calls.back() == "trace AH_SetPredictorConfig\n");
  CHECK(applied == "91");
}

TEST_CASE("only a parameter change is told") {
  Learning learning;
  Listener listener;
  learning.Hear(listener);
  CHECK(learning.Run(AH_SetPredictorConfig, SMEvent::ParamChanging) == kNothingApplied);
  CHECK(learning.Run(AH_SetPredictorConfig, nullptr) == kNothingApplied);
  const ParamChangeEventData change("Strength");
  engine.configurations.reset();
  CHECK(learning.Run(AH_SetPredictorConfig, &change) == kNothingApplied);
  CHECK(listener.sections.empty());
}

TEST_CASE("a changed parameter without a listener changes nothing") {
  Learning learning;
  engine.predictor.reset();
  const ParamChangeEventData change("Strength");
  CHECK(learning.Run(AH_SetPredictorConfig, &change) == kParametersTold);
}

TEST_CASE("the parameters' listener's exceptions are logged, and an unknown one is thrown on") {
  Learning learning;
  Listener listener;
  learning.Hear(listener);
  const ParamChangeEventData change("Strength");
  listener.then = [] { throw std::runtime_error("no weights"); };
  CHECK(learning.Run(AH_SetPredictorConfig, &change) ==
        Joined({kParametersTold, ErrorTraced("no weights")}));
  listener.then = [] { throw 42; };
  CHECK_THROWS_AS(learning.Run(AH_SetPredictorConfig, &change), int);
  CHECK(fakes::TakeJournal() ==
        Joined({kParametersTold,
                ErrorTraced("AH_SetPredictorConfig: ConfigObj::NotifyListener threw an unknown "
                            "exception")}));
}

TEST_CASE("weights that were taken away are reported when a parameter changes") {
  Learning learning;
  fakes::settings.defaults.predictorValues.erase({"CyclicProbabilityPredictor", "FirstLastWeight"});
  const ParamChangeEventData change("Strength");
  CHECK(learning.Run(AH_SetPredictorConfig, &change) ==
        Joined({kParametersTold, ErrorTraced("No weigths specified")}));
}

TEST_CASE("a daily save writes what was learnt, and a new predictor reads it") {
  Learning learning;
  learning.Run(AH_LogEvent, SMEvent::Suspend);
  CHECK(learning.Run(AH_SavePredictionData, SMEvent::Saving) ==
        Joined({{"trace AH_SavePredictionData\n"}, kPredictorLoaded}));
  CHECK(LastState(learning.Data()) == 1);
  CHECK(engine.historian->HasListener());
  auto* const renewed = dynamic_cast<CyclicProbabilityPredictor*>(engine.predictor.get());
  REQUIRE(renewed != nullptr);
  CHECK(renewed->LoadState() == DataFileState::Loaded);
}

TEST_CASE("a daily save that cannot build a predictor is reported, and a later one builds it") {
  struct Row {
    const char* name;
    std::function<void(Learning&)> breakIt;
    std::function<void(Learning&)> mend;
    const char* message;
  };
  const auto valuesBack = [](Learning&) {
    fakes::settings.defaults.predictorValues[{"CyclicProbabilityPredictor", "FirstLastWeight"}] =
        fakes::Text("2");
  };
  const auto folder = std::make_shared<std::wstring>();
  const Row rows[] = {
      {"no values",
       [](Learning&) {
         fakes::settings.defaults.predictorValues.erase(
             {"CyclicProbabilityPredictor", "FirstLastWeight"});
       },
       valuesBack, "No weigths specified"},
      {"no folder",
       [folder](Learning&) { *folder = std::exchange(fakes::settings.dataFolder, L""); },
       [folder](Learning&) { fakes::settings.dataFolder = *folder; }, "invalid string position"},
      {"no time resolution", [](Learning&) { fakes::settings.defaults.values.clear(); },
       [](Learning&) { fakes::settings.defaults.values[L"TimeResolution"] = fakes::Number32(15); },
       "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    Learning learning;
    learning.Run(AH_LogEvent, SMEvent::Suspend);
    row.breakIt(learning);
    const Calls calls = learning.Run(AH_SavePredictionData, SMEvent::Saving);
    CHECK(calls.front() == "trace AH_SavePredictionData\n");
    CHECK(Calls(calls.end() - 2, calls.end()) == ErrorTraced(row.message));
    CHECK(engine.predictor == nullptr);
    // Events go on without a predictor, and what it had learnt is in its file.
    CHECK(learning.Run(AH_LogEvent, SMEvent::Activating) == Calls{"trace AH_LogEvent\n"});
    CHECK(LastState(learning.Data()) == 1);
    row.mend(learning);
    CHECK(learning.Run(AH_SavePredictionData, SMEvent::Saving) ==
          Joined({{"trace AH_SavePredictionData\n"}, kPredictorLoaded}));
    CHECK(engine.predictor != nullptr);
    CHECK(engine.historian->HasListener());
  }
}

TEST_CASE("a daily save overwrites a data file of another version") {
  Learning learning;
  learning.Run(AH_SavePredictionData, SMEvent::Saving);
  std::vector<unsigned char> bytes = learning.Data();
  bytes[0] = 1;
  learning.SetData(bytes);
  CHECK(learning.Run(AH_SavePredictionData, SMEvent::Saving) ==
        Joined({{"trace AH_SavePredictionData\n"}, kPredictorLoaded}));
  CHECK(learning.Data()[0] == 0);
}

TEST_CASE("a daily save without a predictor reports a data file of another version") {
  Learning learning;
  learning.Run(AH_SavePredictionData, SMEvent::Saving);
  std::vector<unsigned char> bytes = learning.Data();
  bytes[0] = 1;
  learning.SetData(bytes);
  engine.predictor.reset();
  CHECK(learning.Run(AH_SavePredictionData, SMEvent::Saving) ==
        Joined({{"trace AH_SavePredictionData\n"},
                kPredictorLoaded,
                ErrorTraced("Version 0 expected")}));
  CHECK(engine.predictor == nullptr);
}

TEST_CASE("events are recorded with their own time, asleep for all but Activating") {
  Learning learning;
  int64_t seconds = 1795284000;
  std::vector<HistoryRecord> expected;
  for (const SMEvent event : kAllEvents) {
    CAPTURE(SMEventName(event));
    tm time;
    TmFromSeconds(seconds, time);
    fakes::SetTime(time);
    const SMEventData data(event);
    fakes::SetTime(LocalTime(2026, 11, 22, 19));
    CHECK(learning.Run(AH_RecordHistoryEvent, &data) == Calls{"trace AH_RecordHistoryEvent\n"});
    expected.push_back({static_cast<double>(seconds), event == SMEvent::Activating ? 0U : 1U, 0});
    seconds += 60;
  }
  learning.Run(AH_SaveHistory, SMEvent::ShuttingDown);
  const auto records = WholeRecords(ReadWholeFile(learning.machine.HistoryFile()).value());
  REQUIRE(records.size() == expected.size());
  for (size_t i = 0; i < records.size(); ++i) {
    CHECK(records[i].time == expected[i].time);
    CHECK(records[i].asleep == expected[i].asleep);
  }
}

TEST_CASE("daylight saving does not move a recorded time") {
  Learning learning;
  SMEventData event(SMEvent::Suspend);
  event.time = LocalTime(2026, 7, 1, 12);
  event.time.tm_isdst = 1;
  learning.Run(AH_RecordHistoryEvent, &event);
  learning.Run(AH_SaveHistory, SMEvent::ShuttingDown);
  const auto records = WholeRecords(ReadWholeFile(learning.machine.HistoryFile()).value());
  REQUIRE(records.size() == 1);
  CHECK(records[0].time == 1782907200);
}

TEST_CASE("recording without an event records nothing; a save asks for folder and limit") {
  Learning learning;
  const SMEventData resume(SMEvent::Activating);
  fakes::SetTime(LocalTime(2026, 11, 21, 18));
  const SMEventData suspend(SMEvent::Suspend);
  learning.Run(AH_RecordHistoryEvent, &resume);
  learning.Run(AH_RecordHistoryEvent, &suspend);
  CHECK(learning.Run(AH_RecordHistoryEvent, nullptr) == Calls{});
  CHECK(learning.Run(AH_SaveHistory, SMEvent::ShuttingDown) ==
        Calls{"trace AH_SaveHistory\n", "settings: GetDataFolder",
              "settings: ReadSetting HistoryLimit"});
  const auto records = WholeRecords(ReadWholeFile(learning.machine.HistoryFile()).value());
  REQUIRE(records.size() == 2);
  CHECK(records[0].time == 1795248309);
  CHECK(records[0].asleep == 0);
  CHECK(records[1].time == 1795284000);
  CHECK(records[1].asleep == 1);
}

TEST_CASE("a history that has no folder is reported, and kept for the next save") {
  Learning learning;
  learning.Run(AH_RecordHistoryEvent, SMEvent::Suspend);
  const std::wstring folder = std::exchange(fakes::settings.dataFolder, L"");
  CHECK(learning.Run(AH_SaveHistory, SMEvent::ShuttingDown) ==
        Joined({{"trace AH_SaveHistory\n", "settings: GetDataFolder"},
                ErrorTraced("invalid string position")}));
  fakes::settings.dataFolder = folder;
  learning.Run(AH_SaveHistory, SMEvent::ShuttingDown);
  CHECK(ReadWholeFile(learning.machine.HistoryFile()).value().size() == 16);
}

TEST_CASE("a reset forgets files and pending records and starts a blank predictor") {
  for (const bool withBackslash : {true, false}) {
    Learning learning;
    if (!withBackslash) fakes::settings.dataFolder.pop_back();
    learning.Run(AH_LogEvent, SMEvent::Suspend);
    learning.Run(AH_SavePredictionData, SMEvent::Saving);
    learning.Run(AH_RecordHistoryEvent, SMEvent::Suspend);
    learning.Run(AH_SaveHistory, SMEvent::Suspend);
    learning.Run(AH_RecordHistoryEvent, SMEvent::Activating);
    REQUIRE_FALSE(learning.machine.HasNoFiles());
    CHECK(learning.Run(AH_ResetHistory, SMEvent::ResetHistory) ==
          Joined({{"trace AH_ResetHistory\n", "settings: GetDataFolder",
                   "settings: WriteSetting ServiceFeedback 1"},
                  kPredictorBuilt}));
    CHECK(learning.machine.HasNoFiles());
    CHECK(fakes::settings.current.values[L"ServiceFeedback"] == fakes::Number32(1));
    CHECK(engine.historian->HasListener());
    learning.Run(AH_SaveHistory, SMEvent::Suspend);
    CHECK(ReadWholeFile(learning.machine.HistoryFile()).value().empty());
    learning.Run(AH_PredictorContainerOff, SMEvent::Suspend);
    CHECK(LastState(learning.Data()) == 4);
  }
}

TEST_CASE("a predictor is gone before its files are deleted or another one is built") {
  // Notes when it is deleted.
  struct Mortal : IPredictor {
    ~Mortal() override {
      fakes::journal.emplace_back(fakes::IsTaken(EngineLock) ? "predictor deleted under EngineLock"
                                                             : "predictor deleted");
    }
    std::vector<PredictionRecord> GetPredictions(const tm&) override { return {}; }
    std::vector<PredictionRecord> PredictHibernate(const tm&) override { return {}; }
    std::vector<PredictionRecord> PredictWake(const tm&) override { return {}; }
    float GetSlotProbability(int) override { return -1; }
  };
  Learning learning;
  engine.predictor = std::make_unique<Mortal>();
  CHECK(learning.Run(AH_ResetHistory, SMEvent::ResetHistory) ==
        Joined({{"trace AH_ResetHistory\n", "predictor deleted under EngineLock",
                 "settings: GetDataFolder", "settings: WriteSetting ServiceFeedback 1"},
                kPredictorBuilt}));
  engine.predictor = std::make_unique<Mortal>();
  CHECK(learning.Run(AH_SavePredictionData, SMEvent::Saving) ==
        Joined({{"trace AH_SavePredictionData\n", "predictor deleted under EngineLock"},
                kPredictorBuilt}));
}

TEST_CASE("no action leaves the engine's lock taken, with or without a data folder") {
  Learning learning;
  learning.Run(AH_RecordHistoryEvent, SMEvent::Suspend);
  for (const Action action : {Action{AH_SaveHistory}, Action{AH_SavePredictionData},
                              Action{AH_ResetHistory}, Action{AH_LogEvent}}) {
    learning.Run(action, SMEvent::Suspend);
    CHECK_FALSE(fakes::IsTaken(EngineLock));
    fakes::settings.dataFolder.clear();
    learning.Run(action, SMEvent::Suspend);
    CHECK_FALSE(fakes::IsTaken(EngineLock));
    fakes::settings.dataFolder = learning.machine.Folder();
  }
}

TEST_CASE("a reset deletes what is beside the files, so that nothing comes back") {
  Learning learning;
  for (const std::wstring& file : {learning.machine.DataFile(), learning.machine.HistoryFile()}) {
    for (const wchar_t* const suffix : {L".part", L".new", L".unread"}) {
      REQUIRE(WriteWholeFile(file + suffix, "x", 1));
    }
  }
  learning.Run(AH_ResetHistory, SMEvent::ResetHistory);
  CHECK(learning.machine.HasNoFiles());
}

TEST_CASE("a reset leaves other files alone") {
  Learning learning;
  const std::wstring other = learning.machine.DataFile() + L".bak";
  REQUIRE(WriteWholeFile(other, "x", 1));
  learning.Run(AH_ResetHistory, SMEvent::ResetHistory);
  CHECK(ReadWholeFile(other).has_value());
}

TEST_CASE("a reset gets rid of a data file of another version, and prediction is back") {
  Learning learning;
  learning.Run(AH_SavePredictionData, SMEvent::Saving);
  std::vector<unsigned char> bytes = learning.Data();
  bytes[0] = 1;
  learning.SetData(bytes);
  engine.predictor.reset();
  learning.Run(AH_ResetHistory, SMEvent::ResetHistory);
  CHECK(engine.predictor != nullptr);
  CHECK(learning.machine.HasNoFiles());
}

TEST_CASE("a reset without a folder or values is reported, and a later one does it") {
  Learning learning;
  learning.Run(AH_RecordHistoryEvent, SMEvent::Suspend);
  learning.Run(AH_SaveHistory, SMEvent::Suspend);
  const std::wstring folder = std::exchange(fakes::settings.dataFolder, L"");
  CHECK(learning.Run(AH_ResetHistory, SMEvent::ResetHistory) ==
        Joined({{"trace AH_ResetHistory\n", "settings: GetDataFolder",
                 "settings: WriteSetting ServiceFeedback 1", "settings: GetDataFolder"},
                ErrorTraced("invalid string position")}));
  CHECK(engine.predictor == nullptr);
  CHECK_FALSE(learning.machine.HasNoFiles());

  fakes::settings.dataFolder = folder;
  auto values = std::exchange(fakes::settings.defaults.predictorValues, {});
  CHECK(learning.Run(AH_ResetHistory, SMEvent::ResetHistory) ==
        Joined({{"trace AH_ResetHistory\n", "settings: GetDataFolder",
                 "settings: WriteSetting ServiceFeedback 1", "settings: GetDataFolder",
                 "settings: ReadSetting TimeResolution"},
                ErrorTraced("No weigths specified")}));
  CHECK(engine.predictor == nullptr);
  CHECK(learning.machine.HasNoFiles());

  fakes::settings.defaults.predictorValues = std::move(values);
  learning.Run(AH_ResetHistory, SMEvent::ResetHistory);
  CHECK(engine.predictor != nullptr);
}

TEST_CASE("a reset does not need its event") {
  Learning learning;
  learning.Run(AH_PredictorContainerOff, SMEvent::Suspend);
  learning.Run(AH_ResetHistory, nullptr);
  CHECK(learning.machine.HasNoFiles());
}

}  // namespace dozewell
