#ifndef DOZEWELL_CTL_EVENT_FEED_H_
#define DOZEWELL_CTL_EVENT_FEED_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace dozewell::ctl {

// Events in the Windows event log, each as the XML in UTF-8 that the log renders it to. Results are
// 0 or the system's error code.

// Hands on every event of the System log, oldest first. What `take` throws goes to the caller.
uint32_t ReadSystemLog(const std::function<void(const std::string& xml)>& take);

// The service's last events, up to `count`, oldest first.
uint32_t ReadLastEvents(size_t count, std::vector<std::string>& events);

// Hands on every event of the service that is logged from now on. Returns 0 once the user stops it
// with Ctrl+C. What `take` throws goes to the caller.
uint32_t WatchEvents(const std::function<void(const std::string& xml)>& take);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_EVENT_FEED_H_
