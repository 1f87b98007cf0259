#ifndef DOZEWELL_OPTIMIZER_SIMULATOR_STOP_REQUEST_H_
#define DOZEWELL_OPTIMIZER_SIMULATOR_STOP_REQUEST_H_

#include <atomic>

namespace dozewell {

// Asks a running search to end soon and to store nothing. Set on any thread; the search clears it
// when it ends.
inline std::atomic<bool> OptimizerStopRequested{false};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_SIMULATOR_STOP_REQUEST_H_
