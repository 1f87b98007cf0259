#include "controller/state_machine/state_machine.h"

#include <algorithm>
#include <mutex>
#include <string>

#include "base/lock.h"
#include "diagnostics/debugger.h"
#include "diagnostics/event_writer.h"

namespace dozewell {

SleepStateMachine* StateMachine = nullptr;

namespace {

constexpr wchar_t kUnknownName[] = L"UNKNOWN";

// Day/month/year hour:minute:second - name.
std::wstring EventText(const SMEventData& event) {
  const auto text = [](int32_t number) { return std::to_wstring(number); };
  const tm& time = event.time;
  return text(time.tm_mday) + L"/" + text(time.tm_mon + 1) + L"/" + text(time.tm_year + 1900) +
         L" " + text(time.tm_hour) + L":" + text(time.tm_min) + L":" + text(time.tm_sec) + L" - " +
         SMEventName(event.event);
}

void TraceAndLog(const wchar_t* label, const wchar_t* text) {
  TraceToDebugger(label);
  TraceToDebugger(text);
  TraceToDebugger(L"\n");
  LogServiceEvent(text, 0, kEventInformation);
}

}  // namespace

const wchar_t* SMEventName(SMEvent event) {
  switch (event) {
    case SMEvent::Activating:
      return L"Activating";
    case SMEvent::Suspend:
      return L"Suspend";
    case SMEvent::ShuttingDown:
      return L"ShuttingDown";
    case SMEvent::ParamChanging:
      return L"ParamChanging";
    case SMEvent::Uninitializing:
      return L"Uninitializing";
    case SMEvent::Saving:
      return L"Saving";
    case SMEvent::ResetHistory:
      return L"ResetHistory";
  }
  return kUnknownName;
}

const wchar_t* SMStateName(SMState state) {
  switch (state) {
    case SMState::Uninitialized:
      return L"Uninitialized";
    case SMState::Active:
      return L"Active";
    case SMState::Spike_S3ToS4:
      return L"Spike_S3ToS4";
    case SMState::Spike_S4ToS3:
      return L"Spike_S4ToS3";
    case SMState::Suspended:
      return L"Suspended";
    case SMState::Off:
      return L"Off";
  }
  return kUnknownName;
}

void SleepStateMachine::Dispatch(const SMEventData* event) {
  if (event == nullptr) {
    const std::wstring error =
        std::wstring(L"SM Error: State: ") + SMStateName(current) + L", NULL event";
    ReportStateMachineError(error.c_str());
    return;
  }
  const std::wstring text = EventText(*event);
  TraceAndLog(L"State Machine event: ", text.c_str());

  const auto entry = std::ranges::find(table_, current, &StateEntry::state);
  if (entry == table_.end()) return;
  bool matched = false;
  for (const Transition& transition : entry->transitions) {
    if (transition.event != event->event) continue;
    matched = true;
    const Guard* const guard = transition.guard;
    if (guard == nullptr || (*guard != nullptr && (*guard)(event))) {
      Take(transition, event);
      return;
    }
  }
  if (!matched && ReportStateMachineError != nullptr) {
    const std::wstring error = std::wstring(L"State Machine Error: State: ") +
                               SMStateName(current) + L", Undefined event: " + text;
    ReportStateMachineError(error.c_str());
  }
}

// The state changes last, so that a state is never entered whose actions did not all run.
void SleepStateMachine::Take(const Transition& transition, const SMEventData* event) {
  for (const Action& action : transition.actions) {
    if (action != nullptr) action(event);
  }
  if (transition.nextState == current) return;
  current = transition.nextState;
  TraceAndLog(L"State Machine new state: ", SMStateName(current));
}

void PostEvent(std::unique_ptr<SMEventData> event) {
  std::unique_lock controller(ControllerLock, std::defer_lock);
  std::unique_lock engine(EngineLock, std::defer_lock);
  if (event != nullptr && event->event == SMEvent::ResetHistory) {
    std::lock(controller, engine);
  } else {
    controller.lock();
  }
  if (StateMachine != nullptr) StateMachine->Dispatch(event.get());
}

}  // namespace dozewell
