#include "base/clock.h"
#include "base/file.h"
#include "base/numbers.h"
#include "base/utf8.h"
#include "ctl/check/facts.h"
#include "ctl/check/message_file.h"
#include "ctl/check/program_path.h"
#include "ctl/event_feed.h"
#include "ctl/guid_text.h"
#include "ctl/live_engine.h"
#include "ctl/live_settings.h"
#include "ctl/pipe_server.h"
#include "ctl/power_policy.h"
#include "ctl/registry_value.h"
#include "event_log/event_log_error.h"
#include "event_log/event_log_file.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "settings/data_folder.h"
#include "settings/predictor_values.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell::ctl {
namespace {

constexpr wchar_t kEventSourceKey[] =
    L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\Dozewell Service";
constexpr wchar_t kEnvironmentKey[] =
    L"SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment";

void GatherPower(CheckFacts& facts) {
  facts.machine = ReadMachineKind();
  for (const uint32_t source : {kPowerSourceAC, kPowerSourceDC}) {
    facts.sleepAfter[source] = ReadSettingInForce(source, kSleepAfterSetting);
  }
  facts.isSchemeUnderPolicy = IsActiveSchemeUnderPolicy();
  Guid scheme = {};
  if (GetActivePowerScheme(scheme)) facts.activeScheme = GuidText(scheme);
}

void GatherService(CheckFacts& facts) {
  facts.ping = CallPing();
  bool isEnabled = false;
  if (facts.ping.IsDone()) {
    NoteWakeTimer(facts.machine, CallGetDriverEnabled(isEnabled).IsDone());
  }
  facts.service = QueryService();
  facts.configuration = ReadServiceConfiguration();
  if (facts.configuration.error == 0) {
    facts.program = ReadPathAccess(WidenUtf8(ProgramOf(facts.configuration.command)));
  }
  if (facts.service.process != 0) facts.token = ReadServiceToken(facts.service.process);
  facts.pipeServer = PipeServerProcess();
  facts.pipe = ReadAccessList(PipeConnection());
}

std::optional<uint32_t> ReadCached(const wchar_t* name) {
  uint32_t minutes = 0;
  return ReadSetting(name, minutes, /*deleteAfterRead=*/false) ? std::optional(minutes)
                                                               : std::nullopt;
}

void GatherSettings(CheckFacts& facts) {
  SettingsFacts& settings = facts.settings;
  settings.featureEnabled = ReadFeatureEnabled();
  settings.predictionsEnabled = ReadPredictionsEnabled();
  settings.currentAttempt = ReadAttempts(kCurrentAttemptName);
  settings.totalAttempts = ReadAttempts(kTotalAttemptsName);
  settings.engineProblem = EngineProblem();
  settings.strength = Atoi(ReadPredictorValue(kPredictorSection, kStrengthName));
  settings.strengthHasResult = StrengthHasResult(settings.strength);
  settings.controller = ExpectController(
      {facts.ping.IsDone(), settings.featureEnabled, settings.currentAttempt,
       settings.totalAttempts, SettingOr(kServiceFeedbackName, kDefaultServiceFeedback) != 0,
       settings.engineProblem});
  settings.cachedHibernateAfter = {ReadCached(kCachedHAForACName), ReadCached(kCachedHAForDCName)};
}

// The service's folder, the one that it lies in, and the files in it.
void GatherDataPaths(CheckFacts& facts) {
  std::wstring folder = DataFolderPath();
  if (folder.empty()) return;
  const std::wstring files[] = {PathInFolder(folder, kHistoryFileName),
                                PathInFolder(folder, kDataFileName)};
  folder.pop_back();
  const std::wstring outer = folder.substr(0, folder.find_last_of(L"\\/"));
  for (const std::wstring& path : {outer, folder, files[0], files[1]}) {
    facts.dataPaths.push_back(ReadPathAccess(path));
  }
}

void GatherEventSource(CheckFacts& facts) {
  facts.eventSource.messageFile = ReadMachineText(kEventSourceKey, L"EventMessageFile");
  if (facts.eventSource.messageFile) {
    facts.eventSource.textError = FindEventText(*facts.eventSource.messageFile);
  }
}

void GatherNights(CheckFacts& facts) {
  std::vector<LogEvent> system;
  facts.lastNights.systemError = ReadSleepEvents(kNightDays, [&system](const std::string& xml) {
    try {
      for (const LogEvent& event : ParseEventLog(xml, "the System log")) system.push_back(event);
    } catch (const EventLogError&) {
      // An event without a time that can be read tells nothing of a night.
    }
  });
  std::vector<ServiceEvent> service;
  facts.lastNights.serviceError = ReadServiceEvents(
      kNightDays, [&service](const std::string& xml) { service.push_back(ParseEventXml(xml)); });
  facts.lastNights.hasServiceEvents = !service.empty();
  facts.lastNights.nights = CompareNights(std::move(system), service, UtcSecondsNow());
}

}  // namespace

CheckFacts GatherFacts() {
  CheckFacts facts = {};
  facts.version = ReadSystemVersion();
  facts.isAdministrator = IsAdministrator();
  GatherPower(facts);
  GatherService(facts);
  GatherSettings(facts);
  GatherDataPaths(facts);
  GatherEventSource(facts);
  facts.zone = ReadZone();
  facts.zoneVariable = ReadMachineText(kEnvironmentKey, L"TZ");
  GatherNights(facts);
  return facts;
}

}  // namespace dozewell::ctl
