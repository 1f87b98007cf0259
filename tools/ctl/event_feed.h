#ifndef DOZEWELL_CTL_EVENT_FEED_H_
#define DOZEWELL_CTL_EVENT_FEED_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace dozewell::ctl {

// Events of the Windows event log, each as the XML that the log makes of it, in UTF-8. Results are
// 0 or the system's error code.

// Passes every event of the System log to `take`, oldest first. What `take` throws reaches the
// caller.
uint32_t ReadSystemLog(const std::function<void(const std::string& xml)>& take);

// The same for those of the last days that tell of sleeps, wakes, starts and shut-downs, and some
// others.
uint32_t ReadSleepEvents(uint32_t days, const std::function<void(const std::string& xml)>& take);

// The same for the service's events of the last days.
uint32_t ReadServiceEvents(uint32_t days, const std::function<void(const std::string& xml)>& take);

// The service's last events, up to `count`, oldest first.
uint32_t ReadLastEvents(size_t count, std::vector<std::string>& events);

// Passes every event of the service that is logged from now on to `take`. Returns 0 once the user
// stops it with Ctrl+C. What `take` throws reaches the caller.
uint32_t WatchEvents(const std::function<void(const std::string& xml)>& take);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_EVENT_FEED_H_
