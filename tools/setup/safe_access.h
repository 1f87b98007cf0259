#ifndef DOZEWELL_SETUP_SAFE_ACCESS_H_
#define DOZEWELL_SETUP_SAFE_ACCESS_H_

#include <cstdint>
#include <string>

#include "base/system_handle.h"
#include "setup/local_memory.h"

namespace dozewell::setup {

// Who can read what only administrators and the system can change.
enum class Readers { kAdministrators, kUsers };

// Rights with which administrators own a folder or file, and they and the system alone can change
// it, or what they were before. What is created in a safe folder inherits its rights, and nothing
// is inherited from outside.
class SafeAccess {
 public:
  // Throws SystemError.
  explicit SafeAccess(Readers readers);
  // Rights that a folder or file had before, as AccessTextOf tells them. Throws SystemError.
  explicit SafeAccess(const std::wstring& text);

  // False when something of that name exists. Throws SystemError on any other failure.
  bool CreateFolder(const std::wstring& path) const;

  // Gives an open file or folder these rights and this owner, and leaves what is in a folder as it
  // is. Returns the system's error code.
  uint32_t Give(void* file) const;

 private:
  LocalMemory descriptor_;
};

// Opens a file or folder for looking at its access rights, a link itself and not what it leads to.
// Null, with the system's last error, when that is refused. `toChange`: for SafeAccess::Give too.
SystemHandle OpenAsItIs(const std::wstring& path, bool toChange);

// What a path leads to when it is opened as it is.
enum class FileKind { kFolder, kFile, kLink };
// A file with several names is a link.
FileKind KindOf(void* file);

// What accounts that are not trusted can do with an open file or folder. Trusted are the system,
// administrators, the system's own installer, and the user who runs this program.
struct AccessOfOthers {
  bool isOwner;        // one of them owns it, or nobody can tell who does
  uint32_t rights;     // what any of them can do with it
  uint32_t inherited;  // what any of them will be able to do with what is created in it
};
AccessOfOthers ReadAccessOfOthers(void* file);

// Rights to change a file or what is in a folder, to put another in its place, or to give oneself
// such rights.
extern const uint32_t kRightsToChange;
// Rights to put another folder in the place of a folder that is not empty, or in the place of a
// folder in it.
extern const uint32_t kRightsToReplace;
extern const uint32_t kRightsToRead;

// Whether others can change a file, or a folder and what is or will be in it.
bool OthersMayChange(const AccessOfOthers& access);

// Owner and rights of an open file or folder as text; empty when they cannot be read.
std::wstring AccessTextOf(void* file);

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_SAFE_ACCESS_H_
