#ifndef DOZEWELL_EVENT_LOG_USAGE_H_
#define DOZEWELL_EVENT_LOG_USAGE_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "event_log/log_event.h"

namespace dozewell {

// A moment at which a machine came into use or left it.
struct UsageMark {
  int64_t time;  // seconds since 1970, UTC
  bool asleep;

  bool operator==(const UsageMark&) const = default;
};

// When a machine was in use.
struct Usage {
  std::vector<UsageMark> marks;  // by turns in use and asleep, never going back in time
  size_t wakesLeftOut = 0;       // wakes that were no use
  size_t unexpectedEnds = 0;     // times at which it lost power or crashed while in use
};

// What events in the order of their times, as PutInOrder leaves them, tell of use. It begins with
// the first event that begins or ends use. Use that the log does not see the end of ends with the
// log, since what came then nobody knows.
//
// A machine that went straight back to sleep was not used: in less than 15 minutes after a timer
// woke it, in less than 2 if the log does not say what did. With 15 minutes a person who came
// meanwhile counts, as systems do not fall asleep earlier than that after they were used.
Usage FindUsage(std::span<const LogEvent> events);

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_USAGE_H_
