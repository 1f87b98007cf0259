#ifndef DOZEWELL_EVENT_LOG_EVENT_LOG_ERROR_H_
#define DOZEWELL_EVENT_LOG_EVENT_LOG_ERROR_H_

#include <stdexcept>

namespace dozewell {

// What is wrong with an event log, as the one line that the user reads: which log, which line of
// it, and what.
class EventLogError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_EVENT_LOG_ERROR_H_
