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

// Each returns the system's error code. What has gone meanwhile need not be undone.

// A folder that something is in stays.
uint32_t RemoveMadeFolder(const std::wstring& path) {
  if (RemoveDirectoryW(path.c_str()) != 0) return ERROR_SUCCESS;
  const DWORD error = GetLastError();
  return error == ERROR_DIR_NOT_EMPTY || error == ERROR_FILE_NOT_FOUND ||
                 error == ERROR_PATH_NOT_FOUND
             ? ERROR_SUCCESS
             : error;
}

// Not over what is in the place: the move was noted before it was tried.
uint32_t MoveBack(const std::wstring& from, const std::wstring& to) {
  if (MoveFileExW(to.c_str(), from.c_str(), 0) != 0) return ERROR_SUCCESS;
  const DWORD error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_ALREADY_EXISTS ? ERROR_SUCCESS : error;
}

uint32_t GiveBackRights(const std::wstring& path, const std::wstring& rights) {
  const SystemHandle file = OpenAsItIs(path, /*toChange*/ true);
  if (file == nullptr) {
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? ERROR_SUCCESS : error;
  }
  return SafeAccess(rights).Give(file.get());
}

uint32_t UndoChange(const FolderChange& change) {
  switch (change.kind) {
    case FolderChange::kMade:
      return RemoveMadeFolder(change.path);
    case FolderChange::kMoved:
      return MoveBack(change.path, change.detail);
    case FolderChange::kRights:
      return GiveBackRights(change.path, change.detail);
  }
  return ERROR_INVALID_DATA;
}

// Undoes as much as possible.
void UndoFolders(const wchar_t* step) {
  std::string failures;
  std::vector<std::wstring> notes = ReadUndoNotes(step);
  std::ranges::reverse(notes);
  for (const std::wstring& note : notes) {
    const FolderChange change = FolderChangeOf(note);
    const uint32_t error = UndoChange(change);
    if (error == ERROR_SUCCESS) continue;
    failures +=
        (failures.empty() ? "" : "; ") +
        std::string(
            SystemError(NarrowToUtf8(change.path) + ": cannot be made as it was before", error)
                .what());
  }
  if (!failures.empty()) throw std::runtime_error(failures);
}

}  // namespace

void UndoDataFolder() { UndoFolders(kDataFolderNotes); }

void UndoInstallFolder() { UndoFolders(kInstallFolderNotes); }

}  // namespace dozewell::setup
