#include "setup/restore.h"

#include <stdexcept>

#include "power/driver_device.h"
#include "power/driver_timer.h"
#include "power/hibernate_after.h"

namespace dozewell::setup {
namespace {

bool SwitchTimersOff() {
  TimerRecord timer;
  if (!ReadDriverTimer(timer)) return false;
  if (((timer.words[0] | timer.words[1]) & kTimerEnabled) == 0) return true;
  for (uint32_t& word : timer.words) word &= ~kTimerEnabled;
  return WriteDriverTimer(timer);
}

}  // namespace

void RestoreMachine() {
  RestoreCachedHA();
  if (!FindDriverDevice()) return;
  const bool areOff = SwitchTimersOff();
  CloseDriverDevice();
  if (!areOff) throw std::runtime_error("the driver's wake timers could not be switched off");
}

}  // namespace dozewell::setup
