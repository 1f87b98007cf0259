#include <windows.h>

#include <cstddef>
#include <string_view>

#include "base/utf8.h"
#include "ctl/check/service_configuration.h"
#include "service/service_host.h"
#include "service/service_manager.h"

namespace dozewell::ctl {
namespace {

// A structure of the system with the texts that it points to; empty when it cannot be read.
using Room = std::vector<std::byte>;

template <typename Query>
Room ReadInto(Query query) {
  DWORD size = 0;
  if (query(nullptr, DWORD{0}, &size) != 0 || GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
    return {};
  }
  Room room(size);
  if (query(room.data(), size, &size) == 0) room.clear();
  // What the structure points to lies in the same bytes, so they are never copied.
  return room;
}

Room ReadOptional(SC_HANDLE service, DWORD level) {
  return ReadInto([service, level](std::byte* room, DWORD size, DWORD* needed) {
    return QueryServiceConfig2W(service, level, reinterpret_cast<BYTE*>(room), size, needed);
  });
}

std::string TextOrNone(const wchar_t* text) {
  return text == nullptr ? std::string() : NarrowToUtf8(text);
}

std::optional<std::vector<int64_t>> ReadRestarts(SC_HANDLE service) {
  const Room room = ReadOptional(service, SERVICE_CONFIG_FAILURE_ACTIONS);
  if (room.empty()) return std::nullopt;
  const auto* const actions = reinterpret_cast<const SERVICE_FAILURE_ACTIONSW*>(room.data());
  std::vector<int64_t> restarts;
  for (DWORD i = 0; i < actions->cActions; ++i) {
    const SC_ACTION& action = actions->lpsaActions[i];
    restarts.push_back(action.Type == SC_ACTION_RESTART ? int64_t{action.Delay} : -1);
  }
  return restarts;
}

std::optional<std::vector<std::string>> ReadPrivileges(SC_HANDLE service) {
  const Room room = ReadOptional(service, SERVICE_CONFIG_REQUIRED_PRIVILEGES_INFO);
  if (room.empty()) return std::nullopt;
  std::vector<std::string> privileges;
  const wchar_t* name = reinterpret_cast<const SERVICE_REQUIRED_PRIVILEGES_INFOW*>(room.data())
                            ->pmszRequiredPrivileges;
  // One text after the other, the last one empty.
  while (name != nullptr && *name != L'\0') {
    privileges.push_back(NarrowToUtf8(name));
    name += std::wstring_view(name).size() + 1;
  }
  return privileges;
}

std::optional<bool> ReadDelay(SC_HANDLE service) {
  SERVICE_DELAYED_AUTO_START_INFO delay = {};
  DWORD size = 0;
  if (QueryServiceConfig2W(service, SERVICE_CONFIG_DELAYED_AUTO_START_INFO,
                           reinterpret_cast<BYTE*>(&delay), sizeof(delay), &size) == 0) {
    return std::nullopt;
  }
  return delay.fDelayedAutostart != FALSE;
}

}  // namespace

ServiceConfiguration ReadServiceConfiguration() {
  ServiceConfiguration configuration;
  const ServiceHandle manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
  if (!manager) {
    configuration.error = GetLastError();
    return configuration;
  }
  const ServiceHandle opened(
      OpenServiceW(static_cast<SC_HANDLE>(manager.get()), kServiceName, SERVICE_QUERY_CONFIG));
  if (!opened) {
    configuration.error = GetLastError();
    return configuration;
  }
  const auto service = static_cast<SC_HANDLE>(opened.get());
  const Room room = ReadInto([service](std::byte* room, DWORD size, DWORD* needed) {
    return QueryServiceConfigW(service, reinterpret_cast<QUERY_SERVICE_CONFIGW*>(room), size,
                               needed);
  });
  if (room.empty()) {
    configuration.error = GetLastError();
    return configuration;
  }
  const auto* const basics = reinterpret_cast<const QUERY_SERVICE_CONFIGW*>(room.data());
  configuration.startType = basics->dwStartType;
  configuration.command = TextOrNone(basics->lpBinaryPathName);
  configuration.account = TextOrNone(basics->lpServiceStartName);
  configuration.startsDelayed = ReadDelay(service);
  configuration.restarts = ReadRestarts(service);
  configuration.privileges = ReadPrivileges(service);
  return configuration;
}

}  // namespace dozewell::ctl
