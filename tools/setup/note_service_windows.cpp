#include <windows.h>
// After windows.h, which it needs.
#include <sddl.h>

#include <cwchar>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "service/service_manager.h"
#include "setup/failure_actions.h"
#include "setup/local_memory.h"
#include "setup/own_service.h"
#include "setup/service_command.h"
#include "setup/system_error.h"
#include "setup/system_steps.h"
#include "setup/undo_notes.h"

namespace dozewell::setup {
namespace {

// A part of what is set for a service, as a text. `set` returns false with the system's last error.
struct Part {
  const char* name;
  std::optional<std::wstring> (*read)(SC_HANDLE service);  // nothing when it cannot be read
  bool (*set)(SC_HANDLE service, const std::wstring& text);
};

bool ChangeService(SC_HANDLE service, DWORD startType, const wchar_t* command) {
  return ChangeServiceConfigW(service, SERVICE_NO_CHANGE, startType, SERVICE_NO_CHANGE, command,
                              nullptr, nullptr, nullptr, nullptr, nullptr, nullptr) != 0;
}

std::optional<std::wstring> ReadCommand(SC_HANDLE service) { return CommandOf(service); }

bool SetCommand(SC_HANDLE service, const std::wstring& text) {
  return ChangeService(service, SERVICE_NO_CHANGE, text.c_str());
}

std::optional<std::wstring> ReadStartType(SC_HANDLE service) {
  return std::to_wstring(StartTypeOf(service));
}

bool SetStartType(SC_HANDLE service, const std::wstring& text) {
  return ChangeService(service, static_cast<DWORD>(std::wcstoul(text.c_str(), nullptr, 10)),
                       nullptr);
}

std::optional<std::wstring> ReadDelay(SC_HANDLE service) {
  SERVICE_DELAYED_AUTO_START_INFO delay = {};
  DWORD size = 0;
  if (QueryServiceConfig2W(service, SERVICE_CONFIG_DELAYED_AUTO_START_INFO,
                           reinterpret_cast<BYTE*>(&delay), sizeof(delay), &size) == 0) {
    return std::nullopt;
  }
  return delay.fDelayedAutostart == 0 ? L"0" : L"1";
}

bool SetDelay(SC_HANDLE service, const std::wstring& text) {
  SERVICE_DELAYED_AUTO_START_INFO delay = {text == L"1"};
  return ChangeServiceConfig2W(service, SERVICE_CONFIG_DELAYED_AUTO_START_INFO, &delay) != 0;
}

std::optional<std::wstring> ReadFailures(SC_HANDLE service) {
  DWORD size = 0;
  QueryServiceConfig2W(service, SERVICE_CONFIG_FAILURE_ACTIONS, nullptr, 0, &size);
  std::vector<BYTE> bytes(size + sizeof(SERVICE_FAILURE_ACTIONSW));
  if (QueryServiceConfig2W(service, SERVICE_CONFIG_FAILURE_ACTIONS, bytes.data(),
                           static_cast<DWORD>(bytes.size()), &size) == 0) {
    return std::nullopt;
  }
  const auto& found = *reinterpret_cast<const SERVICE_FAILURE_ACTIONSW*>(bytes.data());
  FailureActions failures = {static_cast<uint32_t>(found.dwResetPeriod), {}};
  for (DWORD i = 0; i < found.cActions; ++i) {
    failures.actions.push_back({static_cast<uint32_t>(found.lpsaActions[i].Type),
                                static_cast<uint32_t>(found.lpsaActions[i].Delay)});
  }
  return TextOf(failures);
}

bool SetFailures(SC_HANDLE service, const std::wstring& text) {
  const FailureActions failures = FailureActionsOf(text);
  std::vector<SC_ACTION> actions;
  for (const FailureActions::Action& action : failures.actions) {
    actions.push_back({static_cast<SC_ACTION_TYPE>(action.kind), action.delayMs});
  }
  // A list without an end, though empty, deletes the actions; no list at all keeps them.
  SC_ACTION none = {};
  SERVICE_FAILURE_ACTIONSW record = {};
  record.dwResetPeriod = failures.resetSeconds;
  record.cActions = static_cast<DWORD>(actions.size());
  record.lpsaActions = actions.empty() ? &none : actions.data();
  return ChangeServiceConfig2W(service, SERVICE_CONFIG_FAILURE_ACTIONS, &record) != 0;
}

std::optional<std::wstring> ReadAccess(SC_HANDLE service) {
  DWORD size = 0;
  BYTE tooSmall = 0;
  QueryServiceObjectSecurity(service, DACL_SECURITY_INFORMATION, &tooSmall, 0, &size);
  std::vector<BYTE> descriptor(size + 1);
  wchar_t* text = nullptr;
  if (QueryServiceObjectSecurity(service, DACL_SECURITY_INFORMATION, descriptor.data(), size,
                                 &size) == 0 ||
      ConvertSecurityDescriptorToStringSecurityDescriptorW(
          descriptor.data(), SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr) == 0) {
    return std::nullopt;
  }
  const LocalMemory freedAtEnd(text);
  return text;
}

bool SetAccess(SC_HANDLE service, const std::wstring& text) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1,
                                                           &descriptor, nullptr) == 0) {
    return false;
  }
  const LocalMemory freedAtEnd(descriptor);
  return SetServiceObjectSecurity(service, DACL_SECURITY_INFORMATION, descriptor) != 0;
}

std::optional<std::wstring> ReadWhetherItRuns(SC_HANDLE service) {
  SERVICE_STATUS status = {};
  if (QueryServiceStatus(service, &status) == 0) return std::nullopt;
  return status.dwCurrentState == SERVICE_STOPPED || status.dwCurrentState == SERVICE_STOP_PENDING
             ? L"0"
             : L"1";
}

bool StartIfItRan(SC_HANDLE service, const std::wstring& text) {
  return text != L"1" || StartExistingService(service) ||
         GetLastError() == ERROR_SERVICE_ALREADY_RUNNING;
}

// In the order in which they are set. A delay asks for an automatic start.
constexpr Part kParts[] = {
    {"path", ReadCommand, SetCommand},        {"start type", ReadStartType, SetStartType},
    {"delayed start", ReadDelay, SetDelay},   {"restarts", ReadFailures, SetFailures},
    {"access rights", ReadAccess, SetAccess}, {"state", ReadWhetherItRuns, StartIfItRan},
};

std::wstring PrefixOf(const Part& part) { return WidenUtf8(std::string(part.name) + "="); }

}  // namespace

void NoteService() {
  ForgetUndoNotes();
  const ServiceHandle service = OpenOwnService();
  if (service == nullptr) return;
  UndoNotes notes(kServiceNotes);
  for (const Part& part : kParts) {
    const auto text = part.read(static_cast<SC_HANDLE>(service.get()));
    if (text) notes.Add(PrefixOf(part) + *text);
  }
}

void UndoService() {
  const std::vector<std::wstring> notes = ReadUndoNotes(kServiceNotes);
  ForgetUndoNotes();
  if (notes.empty()) return;
  const ServiceHandle service = OpenOwnService();
  if (service == nullptr) {
    throw SystemError("the service is not there any more", ERROR_SERVICE_DOES_NOT_EXIST);
  }
  std::string failures;
  for (const Part& part : kParts) {
    const std::wstring prefix = PrefixOf(part);
    for (const std::wstring& note : notes) {
      if (!note.starts_with(prefix) ||
          part.set(static_cast<SC_HANDLE>(service.get()), note.substr(prefix.size()))) {
        continue;
      }
      failures += (failures.empty() ? "" : "; ") +
                  std::string(SystemError(std::string("the service's ") + part.name +
                                              " cannot be made as before",
                                          GetLastError())
                                  .what());
    }
  }
  if (!failures.empty()) throw std::runtime_error(failures);
}

}  // namespace dozewell::setup
