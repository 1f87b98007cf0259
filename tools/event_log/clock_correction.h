#ifndef DOZEWELL_EVENT_LOG_CLOCK_CORRECTION_H_
#define DOZEWELL_EVENT_LOG_CLOCK_CORRECTION_H_

#include <cstddef>
#include <vector>

#include "event_log/log_event.h"

namespace dozewell {

// What was wrong with the clock while a log was written.
struct ClockCorrections {
  size_t corrected = 0;  // events of a wrong clock that was set later, whose times were corrected
  size_t leftOut = 0;    // events of a wrong clock that was never set

  bool operator==(const ClockCorrections&) const = default;
};

// Puts the events of a log, which may be in any order and contain duplicates, in the order in which
// they happened, and corrects their times.
//
// A clock counts as right once it was set. Events before that, back to the last start or wake, when
// the system took the time from the hardware, move by as much as the clock was set. Events that
// then still lie more than an hour before one with a lower number, or after the last one, were
// stamped by a wrong clock that nobody set; they are left out.
ClockCorrections PutInOrder(std::vector<LogEvent>& events);

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_CLOCK_CORRECTION_H_
