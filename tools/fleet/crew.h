#ifndef DOZEWELL_FLEET_CREW_H_
#define DOZEWELL_FLEET_CREW_H_

#include <functional>

namespace dozewell::fleet {

// How many processors this process may use, at least 1.
int ProcessorCount();

// Runs `work` on up to `count` new threads and `here` on this one, and returns when all have ended.
// Neither may throw. Throws ToolError, having run nothing, when there is no new thread to be had.
void RunBeside(int count, const std::function<void()>& work, const std::function<void()>& here);

// Lets others run for about a millisecond.
void Pause();

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_CREW_H_
