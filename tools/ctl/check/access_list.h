#ifndef DOZEWELL_CTL_CHECK_ACCESS_LIST_H_
#define DOZEWELL_CTL_CHECK_ACCESS_LIST_H_

#include <cstdint>
#include <string>
#include <vector>

namespace dozewell::ctl {

// What an account may do with a thing of the system.
struct AccessEntry {
  std::string sid;  // of the account
  uint32_t rights;  // the system's bits
  bool forChildrenOnly = false;
};

// Who owns a thing and who may do what with it.
struct AccessList {
  uint32_t error = 0;       // the system's, when the rest could not be read
  std::string owner;        // a SID
  bool opensToAll = false;  // it has no list, which allows everybody everything
  std::vector<AccessEntry> allowed;
};

// A file or folder. A link is looked at itself, not what it leads to.
struct PathAccess {
  std::string path;
  uint32_t error = 0;  // the system's, when it could not be opened
  bool isLink = false;
  bool hasOtherNames = false;  // hard links to a file
  AccessList access;
};

// Of an open handle that allows reading this; null counts as ERROR_INVALID_HANDLE.
AccessList ReadAccessList(void* handle);

PathAccess ReadPathAccess(const std::wstring& path);

inline constexpr uint32_t kErrorNoFile = 2;
inline constexpr uint32_t kErrorNoPath = 3;

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_ACCESS_LIST_H_
