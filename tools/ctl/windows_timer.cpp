#include "ctl/windows_timer.h"

#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell::ctl {

WindowsTimer ReadWindowsTimer() {
  switch (SettingOr(kWindowsTimerStateName, 0)) {
    case kWindowsTimerWakes:
      return WindowsTimer::Wakes;
    case kWindowsTimerCannotWake:
      return WindowsTimer::CannotWake;
    default:
      return WindowsTimer::Unused;
  }
}

}  // namespace dozewell::ctl
