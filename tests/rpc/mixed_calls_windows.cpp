#include <windows.h>

#include "dozewell_rpc.h"
#include "rpc/client_binding.h"
#include "rpc/mixed_calls.h"
#include "rpc/pipe_name.h"

namespace dozewell {
namespace {

// Either answer is right: there may be a driver, power schemes and a running controller, or not.
bool IsBoolean(boolean answer) { return answer <= 1; }

}  // namespace

void BindToService() {
  EndOnFailedCall();
  DozewellBinding = BindToPipe(kRpcEndpoint);
}

bool CallByChance(unsigned int procedure, unsigned int chance) {
  boolean flag = 0;
  LONG number = 0;
  WireScheme scheme = WireSchemeBalanced;
  ValueBlock block = {30, 6, 21, 11, 26};
  const auto timer = static_cast<WireTimer>(chance % 2);
  const auto source = static_cast<WireSource>(chance % 2);
  const auto mask = static_cast<WireSettings>(1 + chance % WireSettingsAll);
  switch (procedure) {
    case 0:
      return Call_Ping() == 1;
    case 1:
      return IsBoolean(Call_GetDriverEnabled(&flag)) && IsBoolean(flag);
    case 2:
      return IsBoolean(Call_SetFeatureEnabled(static_cast<boolean>(chance % 2)));
    case 3:
      return Call_GetFeatureEnabled(&flag) == 1 && IsBoolean(flag);
    case 4:
      return IsBoolean(Call_SetWakeTime(timer, &block));
    case 5:
      return IsBoolean(Call_SetWakeRaw(timer, static_cast<LONG>(chance)));
    case 6:
      return IsBoolean(Call_GetWakeTime(timer, &block));
    case 7:
      return IsBoolean(Call_GetWakeRaw(timer, &number)) && number >= 0 && number <= 0xFFFFF;
    case 8:
      return IsBoolean(Call_GetPowerSettings(mask, source, &block));
    case 9:
      return IsBoolean(Call_SetPowerSettings(mask, source, &block));
    case 10:
      return IsBoolean(Call_GetActiveScheme(&scheme)) && scheme <= WireSchemeHighPerformance;
    case 11:
      return IsBoolean(Call_SetActiveScheme(static_cast<WireScheme>(chance % 3)));
    case 12:
      return IsBoolean(Call_ResetHistory(0));
    case 13:
      return Call_SetStrength(static_cast<LONG>(chance % 101)) == 1;
    default:
      return Call_GetStrength(&number) == 1 && number >= 0 && number <= 100;
  }
}

}  // namespace dozewell
