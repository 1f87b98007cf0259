#ifndef DOZEWELL_BASE_SIDE_FILE_H_
#define DOZEWELL_BASE_SIDE_FILE_H_

#include <string>

#include "base/file.h"

namespace dozewell {

// Side files are created beside a file in order to replace it.

// Creates a side file for writing, with the access rights of the file that it is to replace and, if
// this account may set it, the same owner. No other program can open it before that is done. Null
// when it exists already, cannot be created or cannot be given the rights; errno and WhyFileFailed
// have the reason then. `replaced` need not exist.
File CreateSideFile(const std::wstring& path, const std::wstring& replaced);

// Whether both files have the same owner; true also when `replaced` does not exist.
bool HasOwnerOf(const std::wstring& path, const std::wstring& replaced);

// Whether a side file can be trusted: it is a plain file with one name, and its owner is this
// account, an administrator or the system, or the owner of the file that it is to replace.
bool IsOwnSideFile(const std::wstring& path, const std::wstring& replaced);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_SIDE_FILE_H_
