#include "import/event_log_import.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/numbers.h"
#include "common/local_time.h"
#include "common/text.h"
#include "common/utc_time.h"
#include "event_log/event_log_error.h"

namespace dozewell {
namespace {

std::vector<HistoryRecord> RecordsThatCount(const std::optional<History>& history) {
  if (!history) return {};
  return MergeHistory(&history->bytes, {}, -std::numeric_limits<double>::infinity());
}

tm TimeOf(const HistoryRecord& record) { return ToTimeLineEvent(record).time; }

// To the minute.
std::string MinuteText(const HistoryRecord& record) {
  constexpr size_t kLength = 16;
  return WithBlank(FormatLocalTime(TimeOf(record)).substr(0, kLength));
}

struct Finding {
  int64_t count;
  const char* member;  // of the JSON object
  const char* one;
  const char* many;
};

std::vector<Finding> Findings(const EventLogImport& import) {
  const auto count = [](size_t number) { return static_cast<int64_t>(number); };
  return {
      {count(import.log.wakesLeftOut), "wakesLeftOut",
       "wake left out: the machine went straight back to sleep",
       "wakes left out: the machine went straight back to sleep"},
      {count(import.log.unexpectedEnds), "unexpectedEnds",
       "use ended unexpectedly; its end is when the machine was last known to run",
       "uses ended unexpectedly; their ends are when the machine was last known to run"},
      {count(import.log.clock.corrected), "eventsCorrected",
       "event moved by as much as the clock was set afterwards",
       "events moved by as much as the clock was set afterwards"},
      {count(import.log.clock.leftOut), "eventsLeftOut",
       "event left out: the clock was wrong and was never set",
       "events left out: the clock was wrong and was never set"},
  };
}

}  // namespace

ExtendedHistory PutBefore(const std::vector<HistoryRecord>& older,
                          const std::vector<HistoryRecord>& history) {
  const auto isAsleep = [](const HistoryRecord& record) { return record.asleep != 0; };
  ExtendedHistory extended;
  const auto end =
      history.empty() ? older.end() : std::ranges::find_if(older, [&](const HistoryRecord& record) {
        return record.time >= history.front().time;
      });
  extended.records.assign(older.begin(), end);
  extended.added = extended.records.size();
  auto begin = history.begin();
  if (extended.added > 0) {
    const bool wasAsleep = isAsleep(extended.records.back());
    begin = std::ranges::find(history, !wasAsleep, isAsleep);
  }
  extended.records.insert(extended.records.end(), begin, history.end());
  return extended;
}

EventLogImport ImportEvents(const std::string& logName, std::vector<LogEvent> events,
                            const LocalClock& localClock, const std::optional<History>& history) {
  EventLogImport import;
  import.events = events.size();
  import.log = HistoryFromEvents(std::move(events), localClock);
  if (import.log.records.empty()) {
    throw EventLogError(logName + ": no event of it tells when the machine was in use");
  }
  import.history = PutBefore(import.log.records, RecordsThatCount(history));
  return import;
}

LocalClock SystemClock() {
  return [](int64_t utcSeconds) -> std::optional<int64_t> {
    tm time;
    if (!LocalTimeFromUtc(utcSeconds, time)) return std::nullopt;
    return SecondsFromTm(time);
  };
}

std::string AddedText(const EventLogImport& import) {
  const size_t added = import.history.added;
  if (added == 0) return "no records";
  return CountText(static_cast<int64_t>(added), "record", "records") + ", " +
         MinuteText(import.history.records.front()) + " to " +
         MinuteText(import.history.records[added - 1]);
}

std::string FindingsText(const EventLogImport& import) {
  std::string text;
  for (const Finding& finding : Findings(import)) {
    if (finding.count > 0) text += CountText(finding.count, finding.one, finding.many) + "\n";
  }
  return text;
}

std::string ImportText(const EventLogImport& import, const std::string& history) {
  return history + ": " + std::to_string(import.history.records.size()) + " records; from " +
         import.source + ": " + AddedText(import) + "\n" + FindingsText(import);
}

std::string LearntText(const std::string& data, bool learnt) {
  return data + (learnt ? ": learnt\n" : ": left as it is\n");
}

Json ImportJson(const EventLogImport& import, bool learnt) {
  const size_t added = import.history.added;
  const auto& records = import.history.records;
  const auto time = [&](size_t record) {
    return added == 0 ? Json() : Json(FormatLocalTime(TimeOf(records[record])));
  };
  Json json = {{"records", records.size()},
               {"added", added},
               {"from", time(0)},
               {"to", time(added - 1)},
               {"events", import.events}};
  for (const Finding& finding : Findings(import)) json[finding.member] = finding.count;
  json["learnt"] = learnt;
  return json;
}

}  // namespace dozewell
