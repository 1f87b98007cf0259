#include "fakes/machine.h"

#include <utility>

#include "base/process_flags.h"
#include "controller/engine.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/driver_fake.h"
#include "fakes/event_log_fake.h"
#include "fakes/journal.h"
#include "fakes/lock_fake.h"
#include "fakes/power_fake.h"
#include "fakes/service_fake.h"
#include "fakes/settings_fake.h"
#include "fakes/thread_fake.h"
#include "fakes/wake_timer_fake.h"
#include "optimizer/optimizer_thread.h"
#include "optimizer/simulator/stop_request.h"
#include "prediction/history_recorder.h"
#include "prediction/predictor_choice.h"
#include "rpc/rpc_server.h"
#include "service/service_main.h"
#include "service/service_status.h"
#include "support/local_times.h"

namespace dozewell::fakes {
namespace {

void ResetFakes() {
  // A timer that is still in the driver's place goes first, as it keeps a setting.
  ResetDriver();
  ResetSettings();
  power = {};
  systemTimer = {};
  eventLog = {};
  service = {};
  threads = {};
  clock = {};
  ResetLocks();
  journal.clear();
}

void ResetProcess() {
  delete std::exchange(StateMachine, nullptr);
  // The predictor ends its registrations with the others.
  engine.predictor.reset();
  engine = {};
  ClearPendingHistory();
  ControllerStarted = false;
  ControllerStarting = false;
  FeatureEnabled = false;
  DebugLogging = false;
  ConsoleMode = false;
  RPCStopRequested = false;
  OptimizerThreadHandle = kNoThread;
  OptimizerStopRequested = false;
  RatesInForce = false;
  LastSaveTime = {};
  SetServiceState(0, 0);
}

void Provision() {
  settings.defaults.values[L"TimeResolution"] = Number32(15);
  const std::pair<const char*, const char*> values[] = {
      {"DaysInCycle", "7"},      {"MinutesInDay", "1440"},  {"FirstLastWeight", "2"},
      {"SecondLastWeight", "1"}, {"AgregationWeight", "1"}, {"StrengthHigh", "70"},
      {"StrengthLow", "30"},
  };
  for (const auto& [name, text] : values) {
    settings.defaults.predictorValues[{"CyclicProbabilityPredictor", name}] = Text(text);
  }
}

}  // namespace

Machine::Machine() {
  ResetFakes();
  ResetProcess();
  Provision();
  settings.dataFolder = Folder();
  power.values = {{"balanced AC hibernate", 1800}, {"balanced DC hibernate", 900}};
  SetTime(LocalTime(2026, 11, 21, 8, 5, 9));
}

Machine::~Machine() {
  // What a test has happen at locks uses its own variables, which are gone by now.
  ResetLocks();
  ResetProcess();
  ResetFakes();
}

void SetTime(const tm& localTime) {
  clock.utcSeconds = SecondsFromTm(localTime);
  clock.localTime = localTime;
}

}  // namespace dozewell::fakes
