#include "import/powerwatch_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <optional>
#include <utility>

#include "base/wall_clock.h"
#include "common/local_time.h"
#include "common/powerwatch_format.h"
#include "common/text.h"
#include "event_log/event_log_error.h"
#include "service/control_handler.h"

namespace dozewell {
namespace {

// The system tells of it after kPowerResumeAutomatic, or later, when somebody is there.
constexpr uint32_t kPowerResumeByUser = 7;

struct WatchedLine {
  uint32_t control;
  uint32_t type;
  int64_t local;  // wall-clock seconds
  int64_t utc;    // seconds since 1970
  uint64_t tickMs;
};

using Columns = std::array<std::string_view, kPowerwatchColumns>;

std::optional<Columns> SplitColumns(std::string_view line) {
  if (std::ranges::count(line, ',') != kPowerwatchColumns - 1) return std::nullopt;
  Columns columns;
  for (std::string_view& column : columns) {
    const size_t end = std::min(line.find(','), line.size());
    column = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  return columns;
}

// YYYY-MM-DDTHH:MM:SS.mmm, in seconds.
std::optional<int64_t> ParseTime(std::string_view text) {
  constexpr size_t kSecondsLength = 19;
  constexpr size_t kLength = 23;
  if (text.size() != kLength || text[kSecondsLength] != '.' ||
      !std::ranges::all_of(text.substr(kSecondsLength + 1), IsDigit)) {
    return std::nullopt;
  }
  const auto time = ParseLocalTime(text.substr(0, kSecondsLength));
  return time ? std::optional(SecondsFromTm(*time)) : std::nullopt;
}

std::optional<int64_t> ParseUtc(std::string_view text) {
  return text.ends_with('Z') ? ParseTime(text.substr(0, text.size() - 1)) : std::nullopt;
}

// Refuses columns, with the place of their line.
class LineParser {
 public:
  explicit LineParser(std::string where) : where_(std::move(where)) {}

  WatchedLine Parse(std::string_view line) const {
    const auto columns = SplitColumns(line);
    if (!columns) {
      throw EventLogError(where_ + "not " + std::to_string(kPowerwatchColumns) +
                          " columns with commas between");
    }
    const auto& [control, type, identifier, local, utc, tick, awake, sleep, wake, idle] = *columns;
    WatchedLine parsed = {};
    parsed.control = Need(ParseNumber<uint32_t>(control), "control is no number", control);
    parsed.type = Need(ParseNumber<uint32_t>(type), "type is no number", type);
    parsed.local = Need(ParseTime(local), "local_time is no time", local);
    parsed.utc = Need(ParseUtc(utc), "utc_time is no time in UTC", utc);
    parsed.tickMs = Need(ParseNumber<uint64_t>(tick), "tick_ms is no number", tick);
    if (std::abs(parsed.local - parsed.utc) > kSecondsPerDay) {
      Refuse("local_time is more than a day from utc_time", local);
    }
    for (const std::string_view counter : {awake, sleep, wake, idle}) {
      if (counter.empty()) continue;
      Need(ParseNumber<uint64_t>(counter), "a counter is neither a number nor empty", counter);
    }
    return parsed;
  }

 private:
  [[noreturn]] void Refuse(const char* what, std::string_view column) const {
    throw EventLogError(where_ + what + ": " + std::string(column));
  }

  template <typename Value>
  Value Need(const std::optional<Value>& value, const char* what, std::string_view column) const {
    if (!value) Refuse(what, column);
    return *value;
  }

  std::string where_;
};

// What each line says as an event, for which the lines before it count.
class EventMaker {
 public:
  LogEvent Make(const WatchedLine& line) {
    LogEvent event;
    event.record = ++record_;
    event.time = line.utc;
    event.kind = KindOf(line);
    if (event.kind == LogEventKind::Slept) lastSleep_ = line.utc;
    if (event.kind == LogEventKind::Woke) {
      const bool isUserThere = line.type == kPowerResumeByUser;
      // Nobody may be there yet, as after a wake by a timer.
      event.cause = isUserThere ? WakeCause::Device : WakeCause::Timer;
      if (isUserThere && lastSleep_) {
        event.sleepTime = lastSleep_;
        event.wakeTime = line.utc;
      }
    }
    lastTickMs_ = line.tickMs;
    return event;
  }

 private:
  LogEventKind KindOf(const WatchedLine& line) const {
    switch (line.control) {
      case kWatchBegins:
        // The ticks count from the start of the system.
        return line.tickMs < lastTickMs_ ? LogEventKind::Started : LogEventKind::LogStarted;
      case kControlShutdown:
        return LogEventKind::Stopped;
      case kControlPowerEvent:
        if (line.type == kPowerSuspend) return LogEventKind::Slept;
        if (line.type == kPowerResumeAutomatic || line.type == kPowerResumeByUser) {
          return LogEventKind::Woke;
        }
        return LogEventKind::Other;
      default:
        return LogEventKind::Other;
    }
  }

  uint64_t record_ = 0;
  uint64_t lastTickMs_ = 0;
  std::optional<int64_t> lastSleep_;
};

// The local time of the last line before a time, or of the first line, counted on.
LocalClock ClockOf(std::map<int64_t, int64_t> localFromUtc) {
  return [local = std::move(localFromUtc)](int64_t utcSeconds) -> std::optional<int64_t> {
    if (local.empty()) return std::nullopt;
    auto line = local.upper_bound(utcSeconds);
    if (line != local.begin()) --line;
    return line->second + (utcSeconds - line->first);
  };
}

}  // namespace

bool IsPowerwatch(std::string_view text) {
  const std::string_view first = text.substr(0, text.find_first_of("\r\n"));
  return first == kPowerwatchHeader;
}

PowerwatchLog ParsePowerwatch(std::string_view text, const std::string& name) {
  if (!IsPowerwatch(text)) throw EventLogError(name + ": line 1: not the columns of the watch");
  PowerwatchLog log;
  EventMaker maker;
  std::map<int64_t, int64_t> localFromUtc;
  int lineNumber = 0;
  for (const std::string_view line : SplitLines(text)) {
    ++lineNumber;
    // A watch that begins again begins with an empty line.
    if (lineNumber == 1 || line.empty()) continue;
    const LineParser parser(name + ": line " + std::to_string(lineNumber) + ": ");
    const WatchedLine parsed = parser.Parse(line);
    localFromUtc[parsed.utc] = parsed.local;
    log.events.push_back(maker.Make(parsed));
  }
  log.clock = ClockOf(std::move(localFromUtc));
  return log;
}

}  // namespace dozewell
