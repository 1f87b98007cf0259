#ifndef DOZEWELL_EVENT_LOG_EVENT_LOG_ERROR_H_
#define DOZEWELL_EVENT_LOG_EVENT_LOG_ERROR_H_

#include <stdexcept>

namespace dozewell {

// An event log that cannot be read. The message is the one line that the user reads: which log,
// which line of it, and what is wrong.
class EventLogError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_EVENT_LOG_ERROR_H_
