#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "base/system_handle.h"
#include "ctl/check/service_token.h"
#include "ctl/check/sid_text.h"

namespace dozewell::ctl {
namespace {

std::vector<std::byte> Read(HANDLE token, TOKEN_INFORMATION_CLASS what) {
  DWORD size = 0;
  GetTokenInformation(token, what, nullptr, 0, &size);
  std::vector<std::byte> room(size);
  if (GetTokenInformation(token, what, room.data(), size, &size) == 0) room.clear();
  return room;
}

bool HasShutdownPrivilege(const std::vector<std::byte>& room) {
  LUID wanted = {};
  if (room.empty() || LookupPrivilegeValueW(nullptr, L"SeShutdownPrivilege", &wanted) == 0) {
    return false;
  }
  const auto* const list = reinterpret_cast<const TOKEN_PRIVILEGES*>(room.data());
  return std::ranges::any_of(std::span(list->Privileges, list->PrivilegeCount),
                             [&wanted](const LUID_AND_ATTRIBUTES& privilege) {
                               return privilege.Luid.LowPart == wanted.LowPart &&
                                      privilege.Luid.HighPart == wanted.HighPart;
                             });
}

}  // namespace

ServiceToken ReadServiceToken(uint32_t process) {
  ServiceToken rights;
  const SystemHandle opened(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
  HANDLE token = nullptr;
  if (!opened || OpenProcessToken(opened.get(), TOKEN_QUERY, &token) == 0) {
    rights.error = GetLastError();
    return rights;
  }
  const SystemHandle owned(token);
  const std::vector<std::byte> user = Read(token, TokenUser);
  if (user.empty()) {
    rights.error = GetLastError();
    return rights;
  }
  rights.account = SidText(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid);
  rights.maySleep = HasShutdownPrivilege(Read(token, TokenPrivileges));
  return rights;
}

}  // namespace dozewell::ctl
