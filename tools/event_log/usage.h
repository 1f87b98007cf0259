#ifndef DOZEWELL_EVENT_LOG_USAGE_H_
#define DOZEWELL_EVENT_LOG_USAGE_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "event_log/log_event.h"

namespace dozewell {

// A moment at which use of a machine began or ended.
struct UsageMark {
  int64_t time;  // seconds since 1970, UTC
  bool asleep;

  bool operator==(const UsageMark&) const = default;
};

// When a machine was in use.
struct Usage {
  std::vector<UsageMark> marks;  // in use and asleep alternate, and times never go back
  size_t wakesLeftOut = 0;       // wakes that do not count as use
  size_t unexpectedEnds = 0;     // times at which it lost power or crashed while in use
};

// Finds out when a machine was in use from events in the order in which PutInOrder leaves them. The
// result begins with the first event that begins or ends use. Use whose end is not in the log ends
// with the log, since nobody knows what came then.
//
// A wake does not count as use if the machine went straight back to sleep: in less than 15 minutes
// after a timer woke it, or in less than 2 if the log does not say what woke it. With 15 minutes, a
// person who came meanwhile counts, as a machine that was used stays awake for longer than that.
Usage FindUsage(std::span<const LogEvent> events);

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_USAGE_H_
