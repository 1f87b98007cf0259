#include "event_log/event_log_history.h"

#include <algorithm>
#include <utility>

#include "event_log/usage.h"

namespace dozewell {
namespace {

std::vector<HistoryRecord> ToRecords(const std::vector<UsageMark>& marks,
                                     const LocalClock& localClock) {
  std::vector<HistoryRecord> records;
  int64_t earliest = 0;
  for (const UsageMark& mark : marks) {
    // A time that cannot be converted follows the record before it, so that states still alternate.
    const int64_t time = std::max(localClock(mark.time).value_or(earliest), earliest);
    records.push_back({static_cast<double>(time), mark.asleep ? 1U : 0U, 0});
    earliest = time + 1;
  }
  return records;
}

}  // namespace

EventLogHistory HistoryFromEvents(std::vector<LogEvent> events, const LocalClock& localClock) {
  EventLogHistory history;
  history.clock = PutInOrder(events);
  const Usage usage = FindUsage(events);
  history.records = ToRecords(usage.marks, localClock);
  history.wakesLeftOut = usage.wakesLeftOut;
  history.unexpectedEnds = usage.unexpectedEnds;
  return history;
}

}  // namespace dozewell
