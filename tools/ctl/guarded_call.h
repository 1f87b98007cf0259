#ifndef DOZEWELL_CTL_GUARDED_CALL_H_
#define DOZEWELL_CTL_GUARDED_CALL_H_

#include <cstdint>

namespace dozewell::ctl {

// Runs `call(context)`. The RPC runtime reports failures by structured exceptions, which C++ cannot
// catch: this returns the code of one, or 0 when there was none. Exceptions that mean a broken
// program, such as an access violation, are not caught. `call` must own nothing that needs a
// destructor.
uint32_t GuardedCall(void (*call)(void* context), void* context);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_GUARDED_CALL_H_
