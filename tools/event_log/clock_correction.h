#ifndef DOZEWELL_EVENT_LOG_CLOCK_CORRECTION_H_
#define DOZEWELL_EVENT_LOG_CLOCK_CORRECTION_H_

#include <cstddef>
#include <vector>

#include "event_log/log_event.h"

namespace dozewell {

// What was wrong with the clock while a log was written.
struct ClockCorrections {
  size_t corrected = 0;  // events that a wrong clock had stamped and a later setting put right
  size_t leftOut = 0;    // events whose times cannot be, since the clock was never put right

  bool operator==(const ClockCorrections&) const = default;
};

// Puts the events of a log, which may come in any order and some of them twice, in the order in
// which they happened, with the times at which they did.
//
// A clock is taken to be right once it was set. What it stamped before, back to the last start or
// wake, when it was taken over from the hardware, moves by as much as it was set. Events that then
// still lie more than an hour before one that the log had earlier, or after its last one, were
// stamped by a wrong clock that nobody set; they are left out.
ClockCorrections PutInOrder(std::vector<LogEvent>& events);

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_CLOCK_CORRECTION_H_
