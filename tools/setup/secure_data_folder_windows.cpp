#include <windows.h>

#include <optional>
#include <stdexcept>
#include <string>

#include "base/durable_file.h"
#include "base/utf8.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "prediction/rates/rates_file.h"
#include "settings/data_folder.h"
#include "setup/folder_changes.h"
#include "setup/safe_access.h"
#include "setup/system_error.h"
#include "setup/system_steps.h"
#include "setup/undo_notes.h"

namespace dozewell::setup {
namespace {

[[noreturn]] void Fail(const std::wstring& path, uint32_t error) {
  throw SystemError(NarrowToUtf8(path) + ": cannot be made safe", error);
}

// Nothing when the choice was not made.
std::optional<Readers> ReadersOf(const std::string& usersMayRead) {
  if (usersMayRead.empty()) return std::nullopt;
  if (usersMayRead == "1") return Readers::kUsers;
  if (usersMayRead == "0") return Readers::kAdministrators;
  throw std::runtime_error("USERSMAYREAD: neither 0 nor 1: " + usersMayRead);
}

void MoveAside(const std::wstring& path, UndoNotes& notes) {
  constexpr int kMostNames = 100;
  DWORD error = 0;
  for (int i = 1; i <= kMostNames; ++i) {
    const std::wstring name = path + (i == 1 ? L"" : L"." + std::to_wstring(i)) + L".untrusted";
    notes.Add(NoteOf({FolderChange::kMoved, path, name}));
    if (MoveFileExW(path.c_str(), name.c_str(), 0) != 0) return;
    error = GetLastError();
    if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) break;
  }
  Fail(path, error);
}

// Makes an existing file or folder safe: it gets the chosen readers, or keeps its rights if others
// cannot change it. Returns its readers; nothing when it was not trusted and was moved aside.
std::optional<Readers> KeepIfTrusted(const std::wstring& path, FileKind kind,
                                     std::optional<Readers> chosen, UndoNotes& notes) {
  {
    const SystemHandle file = OpenAsItIs(path, /*toChange*/ true);
    const DWORD error = GetLastError();
    // What denies access to the system is not trusted.
    if (file == nullptr && error != ERROR_ACCESS_DENIED) Fail(path, error);
    if (file != nullptr && KindOf(file.get()) == kind) {
      const AccessOfOthers access = ReadAccessOfOthers(file.get());
      if (!access.isOwner) {
        const bool isRead = (access.rights & kRightsToRead) != 0;
        const Readers readers =
            chosen.value_or(isRead ? Readers::kUsers : Readers::kAdministrators);
        if (chosen || OthersMayChange(access)) {
          const std::wstring before = AccessTextOf(file.get());
          if (!before.empty()) notes.Add(NoteOf({FolderChange::kRights, path, before}));
          const uint32_t status = SafeAccess(readers).Give(file.get());
          if (status != ERROR_SUCCESS) Fail(path, status);
        }
        return readers;
      }
    }
  }
  MoveAside(path, notes);
  return std::nullopt;
}

struct SecuredFolder {
  Readers readers;
  bool isNew;
};

SecuredFolder SecureFolder(const std::wstring& path, std::optional<Readers> chosen, Readers ifNew,
                           UndoNotes& notes) {
  const Readers readers = chosen.value_or(ifNew);
  const SafeAccess access(readers);
  if (!access.CreateFolder(path)) {
    const auto kept = KeepIfTrusted(path, FileKind::kFolder, chosen, notes);
    if (kept) return {*kept, false};
    if (!access.CreateFolder(path)) Fail(path, ERROR_ALREADY_EXISTS);
  }
  notes.Add(NoteOf({FolderChange::kMade, path, L""}));
  return {readers, true};
}

void SecureFile(const std::wstring& path, std::optional<Readers> chosen, UndoNotes& notes) {
  if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES &&
      GetLastError() == ERROR_FILE_NOT_FOUND) {
    return;
  }
  KeepIfTrusted(path, FileKind::kFile, chosen, notes);
}

}  // namespace

std::string SecureDataFolder(const std::string& usersMayRead) {
  const std::optional<Readers> chosen = ReadersOf(usersMayRead);
  const std::wstring folder = DataFolderPath();
  if (folder.empty()) throw SystemError("there is no folder for program data", GetLastError());
  const std::wstring inner = folder.substr(0, folder.size() - 1);
  const std::wstring outer = inner.substr(0, inner.rfind(L'\\'));
  UndoNotes notes(kDataFolderNotes);
  // From the outside in, since the owner of a folder can exchange what is in it.
  const Readers readers = SecureFolder(outer, chosen, Readers::kUsers, notes).readers;
  const SecuredFolder secured = SecureFolder(inner, chosen, readers, notes);
  for (const wchar_t* const name : {kHistoryFileName, kDataFileName, kRatesFileName}) {
    SecureFile(folder + name, chosen, notes);
    for (const wchar_t* const suffix : kSideFileSuffixes) {
      SecureFile(folder + name + suffix, chosen, notes);
    }
  }
  if (chosen || secured.isNew) return "";
  return NarrowToUtf8(inner) +
         (secured.readers == Readers::kUsers
              ? ": users may read what was learnt, as before; USERSMAYREAD=0 takes that from them"
              : ": only administrators may read what was learnt, as before; USERSMAYREAD=1 lets "
                "users read it");
}

}  // namespace dozewell::setup
