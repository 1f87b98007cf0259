#include "service/service_status.h"

#include <mutex>

#include "diagnostics/event_writer.h"
#include "service/service_host.h"

namespace dozewell {

Lock& StatusLock = *new Lock;

namespace {

ServiceStatusRecord ServiceStatus = {};

}  // namespace

void SetServiceState(uint32_t state, uint32_t waitHintMs) {
  const std::lock_guard guard(StatusLock);
  ServiceStatus = {state, waitHintMs};
}

void SetServiceState(uint32_t state) {
  const std::lock_guard guard(StatusLock);
  ServiceStatus.state = state;
}

void ReportServiceStatus(const wchar_t* failureText) {
  const std::lock_guard guard(StatusLock);
  const uint32_t error = SendServiceStatus(ServiceStatus);
  if (error != 0) LogServiceEvent(failureText, error, kEventError);
}

}  // namespace dozewell
