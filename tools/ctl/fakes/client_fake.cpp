#include "ctl/fakes/client_fake.h"

#include <algorithm>

#include "ctl/event_feed.h"
#include "ctl/machine_name.h"
#include "ctl/pipe_server.h"
#include "ctl/read_access.h"
#include "ctl/service_calls.h"

namespace dozewell {

fakes::Client fakes::client;

namespace ctl {
namespace {

using fakes::client;

constexpr CallResult kDone = {CallOutcome::Done, 0};

// The answer to a call that the service itself would accept.
CallResult Answer(const char* procedure) {
  client.isCalled = true;
  if (client.unreachable != 0) return {CallOutcome::Unreachable, client.unreachable};
  return client.refused.contains(procedure) ? CallResult{CallOutcome::Refused, 0} : kDone;
}

template <typename Value>
CallResult Get(const char* procedure, const Value& value, Value& output) {
  const CallResult result = Answer(procedure);
  if (result.IsDone()) output = value;
  return result;
}

template <typename Value>
CallResult Set(const char* procedure, const std::string& arguments, Value& value,
               const Value& input) {
  if (client.unreachable == 0) client.calls.push_back(procedure + arguments);
  const CallResult result = Answer(procedure);
  if (result.IsDone()) value = input;
  return result;
}

std::string Words(std::initializer_list<int64_t> numbers) {
  std::string words;
  for (const int64_t number : numbers) words += " " + std::to_string(number);
  return words;
}

}  // namespace

CallResult CallPing() { return Answer("Ping"); }

CallResult CallGetDriverEnabled(bool& enabled) {
  return Get("GetDriverEnabled", client.driverEnabled, enabled);
}

// The feature is switched before the driver can refuse its part.
CallResult CallSetFeatureEnabled(bool enable) {
  const CallResult result =
      Set("SetFeatureEnabled", Words({enable}), client.featureEnabled, enable);
  if (result.IsDone() && client.refused.contains("driver")) return {CallOutcome::Refused, 0};
  return result;
}

CallResult CallGetFeatureEnabled(bool& enabled) {
  return Get("GetFeatureEnabled", client.featureEnabled, enabled);
}

CallResult CallSetWakeTime(uint32_t timer, const WakeTime& time) {
  return Set("SetWakeTime", Words({timer, time.minute, time.hour, time.day, time.month, time.year}),
             client.wakeTimes.at(timer), time);
}

CallResult CallSetWakeRaw(uint32_t timer, int32_t count) {
  return Set("SetWakeRaw", Words({timer, count}), client.wakeCounts.at(timer), count);
}

CallResult CallGetWakeTime(uint32_t timer, WakeTime& time) {
  return Get("GetWakeTime", client.wakeTimes.at(timer), time);
}

CallResult CallGetWakeRaw(uint32_t timer, int32_t& count) {
  return Get("GetWakeRaw", client.wakeCounts.at(timer), count);
}

CallResult CallGetPowerSettings(uint32_t mask, uint32_t source, PowerTimeouts& settings) {
  const CallResult result = Get("GetPowerSettings", client.power.at(source), settings);
  if (result.IsDone() && (mask & client.missingPowerSettings) != 0) {
    return {CallOutcome::Refused, 0};
  }
  return result;
}

CallResult CallSetPowerSettings(uint32_t mask, uint32_t source, const PowerTimeouts& settings) {
  return Set("SetPowerSettings",
             Words({mask, source, settings.displayOff, settings.sleepAfter, settings.hibernateAfter,
                    settings.allowWakeTimers, settings.allowHybridSleep}),
             client.power.at(source), settings);
}

CallResult CallGetActiveScheme(uint32_t& scheme) {
  return Get("GetActiveScheme", client.scheme, scheme);
}

CallResult CallSetActiveScheme(uint32_t scheme) {
  return Set("SetActiveScheme", Words({scheme}), client.scheme, scheme);
}

CallResult CallResetHistory() {
  int32_t unused = 0;
  return Set("ResetHistory", "", unused, 0);
}

CallResult CallSetStrength(int32_t strength) {
  return Set("SetStrength", Words({strength}), client.strength, strength);
}

CallResult CallGetStrength(int32_t& strength) {
  return Get("GetStrength", client.strength, strength);
}

bool HasCalledService() { return client.isCalled; }

ServiceQuery QueryService() { return client.service; }

std::optional<std::string> ReadMachineName() { return client.machineName; }

bool IsReadingDenied(const std::wstring& path) { return client.denied.contains(path); }

std::optional<uint32_t> PipeServerProcess() { return client.pipeServer; }

uint32_t ReadSystemLog(const std::function<void(const std::string& xml)>& take) {
  for (const std::string& xml : client.systemLog) take(xml);
  return client.eventsError;
}

uint32_t ReadSleepEvents(uint32_t, const std::function<void(const std::string& xml)>& take) {
  return ReadSystemLog(take);
}

uint32_t ReadServiceEvents(uint32_t, const std::function<void(const std::string& xml)>& take) {
  return WatchEvents(take);
}

uint32_t ReadLastEvents(size_t count, std::vector<std::string>& events) {
  const size_t got = std::min(count, client.events.size());
  events.assign(client.events.end() - static_cast<std::ptrdiff_t>(got), client.events.end());
  return client.eventsError;
}

uint32_t WatchEvents(const std::function<void(const std::string& xml)>& take) {
  for (const std::string& xml : client.events) take(xml);
  return client.eventsError;
}

}  // namespace ctl
}  // namespace dozewell
