#include "common/version.h"

namespace dozewell {

const char* const kVersion = DOZEWELL_VERSION;

}  // namespace dozewell
