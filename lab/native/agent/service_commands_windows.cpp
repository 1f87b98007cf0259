#include <windows.h>

#include <memory>

#include "agent/commands.h"

namespace dozewell::lab {
namespace {

struct HandleCloser {
  void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};
using Handle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, HandleCloser>;

void Check(bool succeeded) {
  if (!succeeded) throw SystemError{GetLastError()};
}

// Opened once, since that takes most of the time of a command.
SC_HANDLE Manager() {
  static const Handle manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
  Check(manager != nullptr);
  return manager.get();
}

Handle Open(const std::string& name) {
  Handle service(OpenServiceW(Manager(), ToWide(name).c_str(), SERVICE_ALL_ACCESS));
  Check(service != nullptr);
  return service;
}

SERVICE_STATUS_PROCESS Query(const Handle& service) {
  SERVICE_STATUS_PROCESS status;
  DWORD needed = 0;
  Check(QueryServiceStatusEx(service.get(), SC_STATUS_PROCESS_INFO,
                             reinterpret_cast<BYTE*>(&status), sizeof(status), &needed) != 0);
  return status;
}

Fields FieldsOf(const SERVICE_STATUS_PROCESS& status) {
  return {std::to_string(status.dwCurrentState), std::to_string(status.dwProcessId),
          std::to_string(status.dwControlsAccepted), std::to_string(status.dwWaitHint),
          std::to_string(status.dwWin32ExitCode)};
}

std::string Narrow(const wchar_t* text) { return text == nullptr ? "" : ToNarrow(text); }

}  // namespace

Fields CreateTheService(const Fields& arguments) {
  const std::wstring name = ToWide(arguments[0]);
  const Handle service(CreateServiceW(Manager(), name.c_str(), name.c_str(), SERVICE_ALL_ACCESS,
                                      ToNumber(arguments[1]), ToNumber(arguments[2]),
                                      SERVICE_ERROR_NORMAL, ToWide(arguments[3]).c_str(), nullptr,
                                      nullptr, nullptr, nullptr, nullptr));
  Check(service != nullptr);
  return {};
}

Fields StartTheService(const Fields& arguments) {
  Check(StartServiceW(Open(arguments[0]).get(), 0, nullptr) != 0);
  return {};
}

Fields ControlTheService(const Fields& arguments) {
  SERVICE_STATUS status;
  Check(ControlService(Open(arguments[0]).get(), ToNumber(arguments[1]), &status) != 0);
  return {std::to_string(status.dwCurrentState)};
}

Fields QueryTheService(const Fields& arguments) { return FieldsOf(Query(Open(arguments[0]))); }

Fields DescribeTheService(const Fields& arguments) {
  const Handle service = Open(arguments[0]);
  alignas(QUERY_SERVICE_CONFIGW) BYTE configBytes[8192];
  alignas(SERVICE_DESCRIPTIONW) BYTE descriptionBytes[4096];
  auto& config = reinterpret_cast<QUERY_SERVICE_CONFIGW&>(configBytes);
  auto& description = reinterpret_cast<SERVICE_DESCRIPTIONW&>(descriptionBytes);
  DWORD needed = 0;
  Check(QueryServiceConfigW(service.get(), &config, sizeof(configBytes), &needed) != 0);
  Check(QueryServiceConfig2W(service.get(), SERVICE_CONFIG_DESCRIPTION, descriptionBytes,
                             sizeof(descriptionBytes), &needed) != 0);
  return {std::to_string(config.dwServiceType),  std::to_string(config.dwStartType),
          std::to_string(config.dwErrorControl), Narrow(config.lpBinaryPathName),
          Narrow(config.lpDisplayName),          Narrow(config.lpServiceStartName),
          Narrow(description.lpDescription)};
}

Fields DeleteTheService(const Fields& arguments) {
  Check(DeleteService(Open(arguments[0]).get()) != 0);
  return {};
}

Fields KillProcess(const Fields& arguments) {
  const HANDLE process =
      OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, ToNumber(arguments[0]));
  Check(process != nullptr);
  TerminateProcess(process, 1);
  WaitForSingleObject(process, INFINITE);
  CloseHandle(process);
  return {};
}

Fields RemovePrivilege(const Fields& arguments) {
  const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, ToNumber(arguments[0]));
  Check(process != nullptr);
  HANDLE token = nullptr;
  Check(OpenProcessToken(process, TOKEN_ADJUST_PRIVILEGES, &token) != 0);
  TOKEN_PRIVILEGES removed = {};
  removed.PrivilegeCount = 1;
  removed.Privileges[0].Attributes = SE_PRIVILEGE_REMOVED;
  Check(LookupPrivilegeValueW(nullptr, ToWide(arguments[1]).c_str(), &removed.Privileges[0].Luid) !=
        0);
  Check(AdjustTokenPrivileges(token, FALSE, &removed, 0, nullptr, nullptr) != 0);
  CloseHandle(token);
  CloseHandle(process);
  return {};
}

}  // namespace dozewell::lab
