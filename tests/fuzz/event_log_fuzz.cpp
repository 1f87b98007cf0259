// Reads an event log of any content and checks that the times of its history increase and its
// states alternate.

#include <optional>
#include <string_view>

#include "event_log/event_log_error.h"
#include "event_log/event_log_file.h"
#include "event_log/event_log_history.h"
#include "event_log/zone_rules.h"
#include "fuzz/input.h"

namespace dozewell {
namespace {

void Run(std::string_view log) {
  const auto zone = ZoneRules::Parse("CET-1CEST,M3.5.0,M10.5.0/3");
  const EventLogHistory history = HistoryFromEvents(
      ParseEventLog(log, "log"),
      [&zone](int64_t utcSeconds) { return std::optional(zone->WallSeconds(utcSeconds)); });
  const auto& records = history.records;
  for (size_t i = 1; i < records.size(); ++i) {
    fuzz::Require(records[i].time > records[i - 1].time);
    fuzz::Require(records[i].asleep == 1 - records[i - 1].asleep);
  }
  tm time;
  for (const HistoryRecord& record : records) {
    fuzz::Require(TmFromSeconds(static_cast<int64_t>(record.time), time));
  }
}

}  // namespace
}  // namespace dozewell

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  try {
    dozewell::Run({reinterpret_cast<const char*>(data), size});
  } catch (const dozewell::EventLogError&) {
    // A file may be refused.
  }
  return 0;
}
