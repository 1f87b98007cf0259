#ifndef DOZEWELL_CTL_WINDOWS_TIMER_H_
#define DOZEWELL_CTL_WINDOWS_TIMER_H_

namespace dozewell::ctl {

// What the service has of Windows' own wake timer.
enum class WindowsTimer {
  Unused,
  Wakes,
  CannotWake,  // Windows has said that it will not wake this machine
};

// As the service has noted it; one that was killed may have left its note.
WindowsTimer ReadWindowsTimer();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_WINDOWS_TIMER_H_
