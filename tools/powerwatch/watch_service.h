#ifndef DOZEWELL_POWERWATCH_WATCH_SERVICE_H_
#define DOZEWELL_POWERWATCH_WATCH_SERVICE_H_

#include <cstdint>

namespace dozewell::powerwatch {

// Serves the process as the watch's service until it has stopped: each control that the system
// sends is a line in the watch's file. It accepts the controls that the Dozewell service does, asks
// for the same power setting, and asks nothing else of the system. It stops by itself when a line
// cannot be written, with the reason as its exit code. Returns the system's error code when the
// process was not started as a service. The main thread.
uint32_t ServeWatch();

}  // namespace dozewell::powerwatch

#endif  // DOZEWELL_POWERWATCH_WATCH_SERVICE_H_
