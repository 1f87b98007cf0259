#include <windows.h>

#include <string>

#include "stand_ins/failing_import.h"
#include "stand_ins/service_record.h"

// The service's waitable timer. The handle is a real one, but it is the test that lets the timer
// fire: Wine's own neither follows the machine's clock nor wakes anything.

namespace dozewell::lab {
namespace {

constexpr int64_t kTicksPerSecond = 10'000'000;
constexpr int64_t kSecondsFrom1601To1970 = 11'644'473'600;

HANDLE WINAPI Create(SECURITY_ATTRIBUTES* security, BOOL manualReset, const wchar_t* name);
BOOL WINAPI Arm(HANDLE timer, const LARGE_INTEGER* due, LONG period, PTIMERAPCROUTINE routine,
                void* argument, REASON_CONTEXT* context, ULONG delay);
BOOL WINAPI Cancel(HANDLE timer);

const Import<decltype(CreateWaitableTimerW)> CreateImport(SystemCallPlace("CreateWaitableTimerW"),
                                                          Create);
const Import<decltype(SetWaitableTimerEx)> ArmImport(SystemCallPlace("SetWaitableTimerEx"), Arm);
const Import<decltype(CancelWaitableTimer)> CancelImport(SystemCallPlace("CancelWaitableTimer"),
                                                         Cancel);

// A timer ends with its process, so a new one begins unarmed.
HANDLE WINAPI Create(SECURITY_ATTRIBUTES* security, BOOL manualReset, const wchar_t* name) {
  if (const uint32_t error = CreateImport.CountCall()) return FailureOf<HANDLE>(error);
  Record("timer", "create");
  Machine->timerDue = 0;
  return CreateImport.System(security, manualReset, name);
}

// Only a single shot at a time of the calendar is what the service should ask for: anything else
// fails here.
BOOL WINAPI Arm(HANDLE, const LARGE_INTEGER* due, LONG period, PTIMERAPCROUTINE routine,
                void* argument, REASON_CONTEXT* context, ULONG delay) {
  if (const uint32_t error = ArmImport.CountCall()) return FailureOf<BOOL>(error);
  if (due->QuadPart <= 0 || period != 0 || routine != nullptr || argument != nullptr ||
      delay != 0) {
    return FailureOf<BOOL>(ERROR_INVALID_PARAMETER);
  }
  const int64_t seconds = due->QuadPart / kTicksPerSecond - kSecondsFrom1601To1970;
  Record("timer", "arm " + std::to_string(seconds));
  Machine->timerDue = seconds;
  Machine->timerWakes = context != nullptr;
  *Machine->timerReason = '\0';
  if (context != nullptr && context->Version == POWER_REQUEST_CONTEXT_VERSION &&
      context->Flags == POWER_REQUEST_CONTEXT_SIMPLE_STRING) {
    WideCharToMultiByte(CP_UTF8, 0, context->Reason.SimpleReasonString, -1, Machine->timerReason,
                        sizeof(Machine->timerReason), nullptr, nullptr);
  }
  if (context != nullptr && Machine->timerCannotWake != 0) SetLastError(ERROR_NOT_SUPPORTED);
  return TRUE;
}

BOOL WINAPI Cancel(HANDLE) {
  if (const uint32_t error = CancelImport.CountCall()) return FailureOf<BOOL>(error);
  Record("timer", "cancel");
  Machine->timerDue = 0;
  return TRUE;
}

}  // namespace
}  // namespace dozewell::lab
