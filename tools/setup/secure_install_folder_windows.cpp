#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "setup/folder_changes.h"
#include "setup/safe_access.h"
#include "setup/system_error.h"
#include "setup/system_steps.h"
#include "setup/undo_notes.h"

namespace dozewell::setup {
namespace {

[[noreturn]] void Refuse(const std::wstring& path, const char* why) {
  throw std::runtime_error(NarrowToUtf8(path) + ": " + why +
                           "; choose an INSTALLFOLDER that only administrators can change");
}

// Opens something that exists and cannot be a link; null when it does not exist.
SystemHandle OpenIfExists(const std::wstring& path) {
  SystemHandle file = OpenAsItIs(path, /*toChange*/ false);
  const DWORD error = GetLastError();
  if (file == nullptr) {
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return nullptr;
    throw SystemError(NarrowToUtf8(path) + ": its access rights cannot be read", error);
  }
  if (KindOf(file.get()) == FileKind::kLink) Refuse(path, "it is a link");
  return file;
}

// The folders that lead to a path and the path itself, the outermost first, for C:\a\b: C:\, C:\a,
// C:\a\b.
std::vector<std::wstring> FoldersOf(const std::wstring& path) {
  constexpr size_t kRootSize = 3;
  std::vector<std::wstring> folders = {path.substr(0, kRootSize)};
  for (size_t end = kRootSize; end < path.size();) {
    end = std::min(path.find(L'\\', end + 1), path.size());
    folders.push_back(path.substr(0, end));
  }
  return folders;
}

// The whole path, without what is redundant in it and without a backslash at its end.
std::wstring WholePath(const std::string& folder) {
  constexpr DWORD kLongestPath = 32768;
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetFullPathNameW(WidenUtf8(folder).c_str(), kLongestPath, path.data(), nullptr));
  while (path.ends_with(L'\\')) path.pop_back();
  if (path.size() < 4 || path[1] != L':') {
    throw std::runtime_error(folder + ": is no folder on a drive of this machine");
  }
  return path;
}

// A folder around the one for the programs. The root of a drive cannot be deleted or renamed.
bool MayBeReplaced(void* folder, bool isRoot) {
  const AccessOfOthers access = ReadAccessOfOthers(folder);
  const uint32_t harmful = kRightsToReplace & ~(isRoot ? uint32_t{DELETE} : 0);
  return access.isOwner || (access.rights & harmful) != 0;
}

void ExpectNothingOfOthersIn(const std::wstring& folder) {
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  struct Closer {
    HANDLE search;
    ~Closer() { FindClose(search); }
  } const closer = {search};
  do {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    const std::wstring path = folder + L"\\" + name;
    const SystemHandle file = OpenIfExists(path);
    if (file != nullptr && OthersMayChange(ReadAccessOfOthers(file.get()))) {
      Refuse(path, "others may change it");
    }
  } while (FindNextFileW(search, &found) != 0);
}

// Makes a folder, and is content with one that others cannot change.
void SecureFolder(const std::wstring& path, bool isInnermost, bool isRoot, UndoNotes& notes) {
  if (!isRoot && OpenIfExists(path) == nullptr && SafeAccess(Readers::kUsers).CreateFolder(path)) {
    notes.Add(NoteOf({FolderChange::kMade, path, L""}));
  }
  const SystemHandle folder = OpenIfExists(path);
  if (folder == nullptr || KindOf(folder.get()) != FileKind::kFolder) {
    Refuse(path, "it is no folder");
  }
  if (isInnermost ? OthersMayChange(ReadAccessOfOthers(folder.get()))
                  : MayBeReplaced(folder.get(), isRoot)) {
    Refuse(path, "others may change it");
  }
}

}  // namespace

void SecureInstallFolder(const std::string& folder) {
  const std::wstring path = WholePath(folder);
  const std::vector<std::wstring> folders = FoldersOf(path);
  UndoNotes notes(kInstallFolderNotes);
  for (const std::wstring& each : folders) {
    SecureFolder(each, each == folders.back(), each == folders.front(), notes);
  }
  ExpectNothingOfOthersIn(path);
}

void RemoveInstallFolder(const std::string& folder) {
  const std::vector<std::wstring> folders = FoldersOf(WholePath(folder));
  RemoveDirectoryW(folders.back().c_str());
  // A root refuses to be removed.
  RemoveDirectoryW(folders[folders.size() - 2].c_str());
}

}  // namespace dozewell::setup
