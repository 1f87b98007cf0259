#include <windows.h>

#include <algorithm>

#include "setup/deadline.h"
#include "setup/own_service.h"
#include "setup/system_error.h"
#include "setup/system_steps.h"

namespace dozewell::setup {
namespace {

constexpr uint32_t kLongestDeletionMs = 30'000;
constexpr uint32_t kPauseMs = 500;

// The handle that asks is closed again, since the service is there as long as any is open.
bool IsBeingDeleted() {
  const ServiceHandle service = OpenOwnService();
  return service != nullptr &&
         ChangeServiceConfigW(static_cast<SC_HANDLE>(service.get()), SERVICE_NO_CHANGE,
                              SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, nullptr, nullptr, nullptr,
                              nullptr, nullptr, nullptr, nullptr) == 0 &&
         GetLastError() == ERROR_SERVICE_MARKED_FOR_DELETE;
}

}  // namespace

void AwaitDeletion(uint32_t milliseconds) {
  const Deadline deadline(milliseconds);
  while (IsBeingDeleted()) {
    const uint32_t left = deadline.MillisecondsLeft();
    if (left == 0) {
      throw SystemError(
          "the service is still being deleted; close Task Manager and what else shows services, or "
          "restart Windows, and install again",
          ERROR_SERVICE_MARKED_FOR_DELETE);
    }
    Sleep(std::min(left, kPauseMs));
  }
}

void AwaitDeletion() { AwaitDeletion(kLongestDeletionMs); }

}  // namespace dozewell::setup
