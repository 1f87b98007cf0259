#include "stress/quiet_machine.h"

#include <cstdint>
#include <cstring>
#include <cwchar>
#include <map>

#include "controller/state_machine/state_machine.h"
#include "diagnostics/debugger.h"
#include "diagnostics/event_log.h"
#include "power/device_io.h"
#include "power/driver_timer.h"
#include "power/last_sleep.h"
#include "power/power_capabilities.h"
#include "power/power_scheme.h"
#include "power/power_source.h"
#include "power/scheme_settings.h"
#include "power/suspend.h"
#include "power/wake_timer.h"
#include "power/wake_timer_policy.h"
#include "rpc/rpc_runtime.h"
#include "service/service_host.h"
#include "settings/data_folder.h"
#include "settings/predictor_values.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace quiet {

std::wstring dataFolder;
std::vector<std::string> predictors = {""};
Messages messages;
std::atomic<int> suspends{0};

namespace {

std::atomic<uint32_t> reads{0};

// A number below the limit that changes from call to call, so that every kind of wake occurs.
uint32_t Chance(uint32_t limit) { return (reads++ * 2654435761U >> 16) % limit; }

bool Sometimes() { return Chance(3) == 0; }

}  // namespace
}  // namespace quiet

EventSource OpenEventSource(const wchar_t*) { return &quiet::messages; }

bool ReportToEventLog(EventSource, uint16_t, const wchar_t* message) {
  ++quiet::messages.events;
  if (std::wcsstr(message, L"Undefined event") != nullptr) ++quiet::messages.undefinedEvents;
  if (std::wcsncmp(message, L"Optimizer runtime", 17) == 0) ++quiet::messages.searches;
  if (std::wcsncmp(message, L"Terminate optimizer", 19) == 0) ++quiet::messages.searchesStopped;
  for (int state = 0; state < 5; ++state) {
    if (std::wcscmp(message, SMStateName(static_cast<SMState>(state))) == 0) {
      ++quiet::messages.states.at(static_cast<size_t>(state));
    }
  }
  return true;
}

void ClearWholeEventLog(EventSource) {}
void CloseEventSource(EventSource) {}
void TraceToDebugger(const wchar_t*) {}

bool ReadSetting(const wchar_t* name, uint32_t& value, bool) {
  static const std::map<std::wstring, uint32_t> settings = {
      {L"TimeResolution", 30},
      {L"TotalAttempts", 0},
      {L"CurrentAttempt", 0},
      {L"HA_AC", 45},
      {L"OptimizerInterval", 0},
      {L"OptimizerDelay", 0},
      {L"TotalOptimizerAttemptsInDCmode", 0},
      {L"CurrentOptimizerAttemptsInDCmode", 0}};
  const auto found = settings.find(name);
  if (found == settings.end()) return false;
  value = found->second;
  return true;
}

bool WriteSetting(const wchar_t*, uint32_t) { return true; }

// The last run is so long ago that a search is always due.
bool ReadLastOptimizerRun(int64_t& time) {
  time = 1;
  return true;
}

bool WriteLastOptimizerRun(int64_t) { return true; }

std::string ReadPredictorValue(const std::string&, const std::string& name) {
  static const std::map<std::string, std::string> values = {{"DaysInCycle", "7"},
                                                            {"MinutesInDay", "1440"},
                                                            {"FirstLastWeight", "2"},
                                                            {"SecondLastWeight", "1"},
                                                            {"AgregationWeight", "1"},
                                                            {"StrengthHigh", "70"},
                                                            {"StrengthLow", "30"},
                                                            {"StrengthHighRange", "60,90"},
                                                            {"StrengthLowRange", "30,60"},
                                                            {"FirstLastWeightRange", "2,10"},
                                                            {"SecondLastWeightRange", "1,20"},
                                                            {"DayGroupingRange", "0,2"},
                                                            {"WR", "0,50,100"}};
  if (name == "Predictor") {
    static std::atomic<size_t> chosen{0};
    return quiet::predictors[chosen++ % quiet::predictors.size()];
  }
  const auto found = values.find(name);
  return found != values.end() ? found->second : std::string();
}

bool WritePredictorValue(const std::string&, const std::string&, const std::string&) {
  return true;
}

std::wstring GetDataFolder() { return quiet::dataFolder; }

void* OpenDevice() { return &quiet::messages; }

bool PerformIoControl(void*, uint32_t, const void*, size_t, void* output, size_t outputSize) {
  const std::array<uint32_t, 2> timer = {0, quiet::Sometimes() ? kTimerExpired : 0};
  const std::array<uint32_t, 2> status = {
      quiet::Sometimes() ? kSleepWentOnToHibernation : kSleepEndedByTimer, 0};
  if (outputSize != 0) {
    std::memcpy(output, outputSize == sizeof(timer) ? timer.data() : status.data(), outputSize);
  }
  return true;
}

void CloseDevice(void*) {}

void* CreateWakeTimer() { return &quiet::messages; }
WakeTimerArming ArmWakeTimer(void*, int64_t) { return WakeTimerArming::kArmed; }
void CancelWakeTimer(void*) {}
void CloseWakeTimer(void*) {}

std::optional<LastSleep> ReadLastSleep() { return std::nullopt; }

bool ReadPowerCapabilities(PowerCapabilities& capabilities) {
  capabilities.bytes[PowerCapabilities::kTimerWake] = PowerCapabilities::kStateS4;
  return true;
}

std::optional<uint32_t> ReadWakeTimerPolicy(uint32_t) { return kWakeTimersAllowed; }

bool GetActivePowerScheme(Guid& scheme) {
  scheme = {};
  return true;
}

bool SetActivePowerScheme(const Guid&) { return true; }

// The timeout is some steps of the clock, so that a sleep sometimes lasts just as long.
bool ReadSchemeValue(uint32_t, const Guid&, const Guid&, const Guid&, uint32_t& value) {
  value = static_cast<uint32_t>(quiet::kClockStep) * (1 + quiet::Chance(16));
  return true;
}

bool WriteSchemeValue(uint32_t, const Guid&, const Guid&, const Guid&, uint32_t) { return true; }

bool ReadAcLineStatus(uint8_t& status) {
  status = quiet::Sometimes() ? kLineOffline : kLineOnline;
  return true;
}

bool SuspendSystem() {
  ++quiet::suspends;
  return true;
}

uint32_t UseServerEndpoint() { return 0; }
uint32_t RegisterServerInterface() { return 0; }
uint32_t RegisterServerAuthentication() { return 0; }
uint32_t ListenForCalls() { return 0; }
uint32_t WaitServerListen() { return 0; }
uint32_t StopServerListening() { return 0; }
uint32_t SendServiceStatus(const ServiceStatusRecord&) { return 0; }

}  // namespace dozewell
