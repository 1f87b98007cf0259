#ifndef DOZEWELL_BASE_SIDE_FILE_H_
#define DOZEWELL_BASE_SIDE_FILE_H_

#include <string>

#include "base/file.h"

namespace dozewell {

// Files that are made beside another one to take its place.

// Creates a file for writing, which must not be there yet, with the access rights and, where this
// account may give it, the owner of the file that it is to replace, if there is one. Nobody else
// can open it before it has them. Null when it could not be created or given those rights.
File CreateSideFile(const std::wstring& path, const std::wstring& replaced);

// Whether the owner stays the same when the file takes the other's place; so it does when there is
// no other.
bool HasOwnerOf(const std::wstring& path, const std::wstring& replaced);

// Whether a file is to be trusted as what the service left beside another: it is a plain file with
// no second name, made by this account, by one with more rights, or by the owner of the other.
bool IsOwnSideFile(const std::wstring& path, const std::wstring& replaced);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_SIDE_FILE_H_
