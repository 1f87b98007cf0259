#include "ctl/unsaved_learning.h"

#include <cstdint>

#include "base/clock.h"
#include "ctl/event_feed.h"
#include "ctl/live_settings.h"
#include "ctl/service_calls.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell::ctl {
namespace {

// All events since the service's start, and some from before it, so that it shows when the log does
// not go back that far.
uint32_t DaysToRead(int64_t startTime) {
  return static_cast<uint32_t>((UtcSecondsNow() - startTime) / kSecondsPerDay) + 2;
}

}  // namespace

UnsavedLearning ReadUnsavedLearning() {
  if (!CallPing().IsDone()) return {"the service does not answer", {}};
  if (!ReadFeatureEnabled()) return {"the feature is off", {}};
  uint32_t startTime = 0;
  if (!ReadSetting(kStartTimeName, startTime, /*deleteAfterRead=*/false) ||
      startTime > UtcSecondsNow()) {
    return {"it is not known when the service started", {}};
  }
  std::vector<ServiceEvent> events;
  const uint32_t error = ReadServiceEvents(
      DaysToRead(startTime),
      [&events](const std::string& xml) { events.push_back(ParseEventXml(xml)); });
  if (error != 0) {
    return {"the event log cannot be read (error " + std::to_string(error) + ")", {}};
  }
  return {"", ReadLearning(events, startTime)};
}

std::vector<HistoryRecord> RecordsAfter(const UnsavedLearning& unsaved,
                                        const std::optional<tm>& last) {
  std::vector<HistoryRecord> records;
  if (!unsaved.why.empty()) return records;
  for (const TimeLineEvent& event :
       unsaved.learning.After(last).value_or(std::vector<TimeLineEvent>())) {
    const uint32_t asleep = event.state == Activating ? 0 : 1;
    records.push_back({static_cast<double>(SecondsFromTm(event.time)), asleep, 0});
  }
  return records;
}

}  // namespace dozewell::ctl
