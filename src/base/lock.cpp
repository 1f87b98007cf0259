#include "base/lock.h"

namespace dozewell {

Lock& EngineLock = *new Lock;
Lock& ControllerLock = *new Lock;

}  // namespace dozewell
