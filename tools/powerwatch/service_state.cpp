#include "powerwatch/service_state.h"

#include "service/control_handler.h"
#include "service/service_host.h"

namespace dozewell::powerwatch {

uint32_t StateAfter(uint32_t control, uint32_t state) {
  switch (control) {
    case kControlStop:
    case kControlShutdown:
      return kServiceStopPending;
    case kControlPause:
      return kServicePaused;
    case kControlContinue:
      return kServiceRunning;
    default:
      return state;
  }
}

}  // namespace dozewell::powerwatch
