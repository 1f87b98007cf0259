#include <windows.h>

#include "power/power_source.h"

namespace dozewell {

bool ReadAcLineStatus(uint8_t& status) {
  SYSTEM_POWER_STATUS power;
  if (!GetSystemPowerStatus(&power)) return false;
  status = power.ACLineStatus;
  return true;
}

}  // namespace dozewell
