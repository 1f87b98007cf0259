// Starts and stops the controller, posts every event and replaces the predictor, all at once on
// eight threads. Argument: how many things each thread does. The test is that the run ends and that
// no sanitizer complains; the counts at the end show that everything was reached. Before that,
// records are made while they are saved, and power events come while the history file is in use.

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <string>

#include "base/file.h"
#include "base/lock.h"
#include "base/numbers.h"
#include "base/process_flags.h"
#include "base/thread.h"
#include "controller/controller.h"
#include "controller/engine.h"
#include "controller/state_machine/state_machine.h"
#include "optimizer/optimizer_thread.h"
#include "power/open_driver_device.h"
#include "prediction/history_file.h"
#include "prediction/history_recorder.h"
#include "rpc/procedures.h"
#include "service/control_handler.h"
#include "service/service_host.h"
#include "settings/setting_names.h"
#include "stress/quiet_machine.h"
#include "support/parallel.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

constexpr int kThreads = 8;

int rounds = 2000;

void Post(SMEvent event) { PostEvent(std::make_unique<SMEventData>(event)); }

// Suspends and resumes are more frequent than the rest, so that whole nights are played.
void DoSomething(uint32_t choice) {
  switch (choice % 24) {
    case 0:
      return StartController();
    case 1:
      // A start follows at once, so that most events find a controller.
      StopController();
      return StartController();
    case 2:
      return Post(SMEvent::Saving);
    case 3:
      return Post(SMEvent::ResetHistory);
    case 4:
      return PostEvent(std::make_unique<ParamChangeEventData>("Strength"));
    case 5:
      return Post(choice % 5 == 0 ? SMEvent::ShuttingDown : SMEvent::Activating);
    case 6:
      return Post(choice % 5 == 0 ? SMEvent::Uninitializing : SMEvent::Suspend);
    case 7:
      ServiceCtrlHandler(kControlPowerEvent, kPowerStatusChange, nullptr);
      return;
    case 8:
      ServiceCtrlHandler(kControlPowerEvent, kPowerSettingChange, kIdleBackgroundTask.data());
      return;
    case 9:
      ServiceCtrlHandler(kControlPowerEvent, kPowerResumeAutomatic, nullptr);
      return;
    default:
      return Post(choice % 2 == 0 ? SMEvent::Suspend : SMEvent::Activating);
  }
}

void Work(int number) {
  uint32_t state = static_cast<uint32_t>(number) + 1;
  for (int round = 0; round < rounds; ++round) {
    state = state * 1664525 + 1013904223;
    DoSomething(state >> 8);
  }
}

// A run in which two threads wait for each other never ends; this is many times as long as a run
// takes, so that it fails all the same.
constexpr uint32_t kMostSeconds = 3600;

void Watch() {
  SleepMilliseconds(kMostSeconds * 1000);
  std::puts("FAILED: something waits for ever\n0 passed, 1 failed");
  std::fflush(stdout);
  std::_Exit(1);
}

// A condition that must hold after a run.
struct Check {
  bool holds;
  const char* text;
};

int CountFailures(std::initializer_list<Check> checks) {
  int failures = 0;
  for (const Check& check : checks) {
    if (check.holds) continue;
    std::printf("FAILED: %s\n", check.text);
    ++failures;
  }
  return failures;
}

int CheckWhatWasMet() {
  const quiet::Messages& met = quiet::messages;
  return CountFailures({
      {met.states[0] > 0, "Active was entered"},
      {met.states[1] > 0, "Spike_S3ToS4 was entered"},
      {met.states[2] > 0, "Spike_S4ToS3 was entered"},
      {met.states[3] > 0, "Suspended was entered"},
      {met.states[4] > 0, "Off was entered"},
      {met.undefinedEvents > 0, "an undefined event was met"},
      {met.searches > 0, "a search ended"},
      {met.searchesStopped > 0, "a search was asked to end"},
      {quiet::suspends > 0, "the machine was put back to sleep"},
  });
}

int CheckWhatIsLeft() {
  return CountFailures({
      {!ControllerStarted && StateMachine == nullptr, "the machine is gone"},
      {engine.predictor == nullptr && engine.historian == nullptr &&
           engine.configurations == nullptr && !engine.nextSleepTime,
       "the engine is gone"},
  });
}

constexpr int64_t kFirstRecord = 1795219200;  // 2026-11-21 00:00
std::atomic<bool> recording{true};

// The first thread makes records, the others save them all the while.
void RecordOrSave(int number) {
  if (number != 0) {
    while (recording) AH_SaveHistory();
    return;
  }
  for (int record = 0; record < rounds; ++record) {
    AppendToHistory(kFirstRecord + record, record % 2 != 0);
  }
  recording = false;
}

int CheckThatNoRecordIsLost() {
  RunInParallel(4, RecordOrSave);
  AH_SaveHistory();
  const std::wstring path = quiet::dataFolder + kHistoryFileName;
  const auto file = ReadWholeFile(path);
  RemoveFile(path);
  return CountFailures({{file && WholeRecords(*file).size() == static_cast<size_t>(rounds),
                         "every record was saved once"}});
}

std::atomic<bool> holding{false};
std::atomic<int> atWork{0};

// Works on the history's file for as long as it is told to.
void HoldFile() {
  const std::lock_guard guard(EngineLock);
  holding = true;
  while (holding) SleepMilliseconds(1);
}

template <auto kWork>
void StartWork() {
  ++atWork;
  StartThread([] {
    kWork();
    --atWork;
  });
}

void ComeAndGo() {
  constexpr int kNights = 100;
  for (int night = 0; night < kNights; ++night) {
    ServiceCtrlHandler(kControlPowerEvent, kPowerSuspend, nullptr);
    ServiceCtrlHandler(kControlPowerEvent, kPowerStatusChange, nullptr);
    ServiceCtrlHandler(kControlPowerEvent, kPowerResumeAutomatic, nullptr);
  }
}

// Power events come while another thread works on the file, and a reset, a save and a start wait
// for that thread. If one of the events waited, the run would not end.
int CheckThatPowerEventsPass() {
  StartController();
  StartWork<HoldFile>();
  while (!holding) SleepMilliseconds(1);
  StartWork<[] { ResetHistory(); }>();
  StartWork<[] { AH_SaveHistory(); }>();
  SleepMilliseconds(50);
  const int events = quiet::messages.events;
  ComeAndGo();
  const bool passed = quiet::messages.events > events;
  StopController();
  StartWork<[] { SetFeatureEnabled(true); }>();
  SleepMilliseconds(50);
  ComeAndGo();
  holding = false;
  while (atWork != 0) SleepMilliseconds(1);
  return CountFailures({{passed, "power events came while the file was being worked on"},
                        {ControllerStarted, "the start came to its end afterwards"}});
}

// All other threads have ended, so none can launch another one.
void EndOptimizerThread() {
  while (IsThreadRunning(OptimizerThreadHandle)) SleepMilliseconds(1);
  CloseThread(OptimizerThreadHandle);
}

bool Run() {
  const TempFolder folder;
  quiet::dataFolder = folder.Path() + L"\\";
  // Rates fit themselves anew after each sleep, so more of them would make a long test of it.
  quiet::predictors = {kSlotsPredictor, kSlotsPredictor, kSlotsPredictor,
                       kSlotsPredictor, kSlotsPredictor, kRatesPredictor};
  FeatureEnabled = true;
  OpenDriverDevice();
  StartThread(Watch);
  int failures = CheckThatNoRecordIsLost() + CheckThatPowerEventsPass();
  RunInParallel(kThreads, Work);
  // Threads that the gate or the controller started may still be on their way.
  while (ControllerStarting) {
  }
  EndOptimizerThread();
  StopController();
  std::printf("%d events logged, %d undefined, %d searches\n", quiet::messages.events.load(),
              quiet::messages.undefinedEvents.load(), quiet::messages.searches.load());
  failures += CheckWhatWasMet() + CheckWhatIsLeft();
  return failures == 0;
}

}  // namespace
}  // namespace dozewell

int main(int argc, char** argv) {
  if (argc > 1) dozewell::rounds = dozewell::Atoi(argv[1]);
  const bool passed = dozewell::Run();
  std::puts(passed ? "1 passed, 0 failed" : "0 passed, 1 failed");
  return passed ? 0 : 1;
}
