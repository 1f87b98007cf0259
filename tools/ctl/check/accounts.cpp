#include "ctl/check/accounts.h"

#include <algorithm>
#include <iterator>

namespace dozewell::ctl {
namespace {

struct Account {
  const char* sid;
  const char* name;
  bool isTrusted;
};
constexpr Account kAccounts[] = {
    {"S-1-1-0", "Everyone", false},
    {"S-1-2-0", "local users", false},
    // These stand for the owner, who is looked at too.
    {"S-1-3-0", "its creator", true},
    {"S-1-3-4", "its owner", true},
    {"S-1-5-2", "network users", false},
    {"S-1-5-4", "users at the machine", false},
    {"S-1-5-7", "anonymous users", false},
    {"S-1-5-11", "signed-in users", false},
    {"S-1-5-18", "LocalSystem", true},
    {"S-1-5-19", "LocalService", false},
    {"S-1-5-20", "NetworkService", false},
    {"S-1-5-32-544", "Administrators", true},
    {"S-1-5-32-545", "Users", false},
    {"S-1-5-32-546", "Guests", false},
    {"S-1-5-32-547", "Power Users", false},
    {"S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464", "TrustedInstaller", true},
};

const Account* FindAccount(const std::string& sid) {
  const auto* const found = std::ranges::find(
      kAccounts, sid, [](const Account& account) { return std::string(account.sid); });
  return found == std::end(kAccounts) ? nullptr : found;
}

}  // namespace

std::string AccountName(const std::string& sid) {
  const Account* const account = FindAccount(sid);
  return account == nullptr ? sid : account->name;
}

bool IsTrusted(const std::string& sid, const std::string& own) {
  const Account* const account = FindAccount(sid);
  return (account != nullptr && account->isTrusted) || (!own.empty() && sid == own);
}

std::vector<std::string> StrangersWith(uint32_t rights, const AccessList& access,
                                       const std::string& own) {
  if (access.opensToAll) return {AccountName("S-1-1-0")};
  std::vector<std::string> strangers;
  for (const AccessEntry& entry : access.allowed) {
    if ((entry.rights & rights) == 0 || entry.forChildrenOnly || IsTrusted(entry.sid, own)) {
      continue;
    }
    const std::string name = AccountName(entry.sid);
    if (std::ranges::find(strangers, name) == strangers.end()) strangers.push_back(name);
  }
  return strangers;
}

}  // namespace dozewell::ctl
