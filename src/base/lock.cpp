#include "base/lock.h"

namespace dozewell {

Lock EngineLock;

}  // namespace dozewell
