#ifndef DOZEWELL_CTL_CHECK_ACCOUNTS_H_
#define DOZEWELL_CTL_CHECK_ACCOUNTS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "ctl/check/access_list.h"

namespace dozewell::ctl {

// The name of an account that every machine has, or its SID.
std::string AccountName(const std::string& sid);

// Who runs as the system or can become it anyway: it, administrators, the system's installer, and
// the account `own` that the service itself runs under.
bool IsTrusted(const std::string& sid, const std::string& own);

// The rights to change a file or folder, what is in it, or its rights.
inline constexpr uint32_t kRightsToChange = 0x500D0156;

// The names of the accounts that are not trusted and have some of these rights, each once. All who
// may do everything where there is no list.
std::vector<std::string> StrangersWith(uint32_t rights, const AccessList& access,
                                       const std::string& own);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_ACCOUNTS_H_
