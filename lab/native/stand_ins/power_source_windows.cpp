#include <windows.h>

#include "stand_ins/failing_import.h"
#include "stand_ins/service_record.h"

namespace dozewell::lab {
namespace {

BOOL WINAPI GetPowerStatus(SYSTEM_POWER_STATUS* status);

const Import<decltype(GetSystemPowerStatus)> PowerStatusImport(
    SystemCallPlace("GetSystemPowerStatus"), GetPowerStatus);

BOOL WINAPI GetPowerStatus(SYSTEM_POWER_STATUS* status) {
  if (const uint32_t error = PowerStatusImport.CountCall()) return FailureOf<BOOL>(error);
  *status = {};
  status->ACLineStatus = static_cast<BYTE>(Machine->acLineStatus);
  status->BatteryLifePercent = 50;
  status->BatteryLifeTime = status->BatteryFullLifeTime = ~DWORD{0};  // not known
  Record("power-source", Format("read %u", status->ACLineStatus));
  return TRUE;
}

}  // namespace
}  // namespace dozewell::lab
