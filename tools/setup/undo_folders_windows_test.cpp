#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "base/utf8.h"
#include "setup/folder_changes.h"
#include "setup/system_steps.h"
#include "setup/undo_notes.h"
#include "support/access_rights_windows.h"
#include "support/program_data_windows.h"
#include "support/registry_windows.h"
#include "support/temp_folder.h"

namespace dozewell::setup {

using namespace support;

namespace {

bool IsThere(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void MakeFile(const std::wstring& path) {
  CloseHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
  REQUIRE(IsThere(path));
}

// A machine whose data folder is secured and then made as it was before.
class UndoneMachine {
 public:
  UndoneMachine() : programData_(folder_.Path()) {}

  std::wstring Outer() const { return folder_.File(L"Brevan"); }
  std::wstring Inner() const { return Outer() + L"\\Z7"; }
  std::wstring Elsewhere() const { return folder_.File(L"programs"); }
  bool IsEmpty() const { return folder_.IsEmpty(); }

 private:
  const TempFolder folder_;
  const ProgramDataAt programData_;
  const CleanProductKeys keys_;
};

}  // namespace

TEST_CASE("folders that an installation made go when it is undone, unless something is in them") {
  const UndoneMachine machine;
  SecureDataFolder("");
  UndoDataFolder();
  CHECK(machine.IsEmpty());

  SecureDataFolder("");
  MakeFile(machine.Inner() + L"\\zs7state.dat");
  UndoDataFolder();
  CHECK(IsThere(machine.Inner() + L"\\zs7state.dat"));
}

TEST_CASE("an empty folder that was there before an installation is there when it is undone") {
  const UndoneMachine machine;
  CreateDirectoryW(machine.Outer().c_str(), nullptr);
  SecureDataFolder("");
  UndoDataFolder();
  CHECK(IsFolder(machine.Outer()));
  CHECK_FALSE(IsThere(machine.Inner()));

  CreateDirectoryW(machine.Elsewhere().c_str(), nullptr);
  SecureInstallFolder(NarrowToUtf8(machine.Elsewhere() + L"\\inner"));
  CHECK(IsFolder(machine.Elsewhere() + L"\\inner"));
  UndoInstallFolder();
  CHECK(IsFolder(machine.Elsewhere()));
  CHECK_FALSE(IsThere(machine.Elsewhere() + L"\\inner"));
}

TEST_CASE("what an installation moved aside is back when it is undone") {
  const UndoneMachine machine;
  MakeFile(machine.Outer());
  MakeFile(machine.Outer() + L".untrusted");
  SecureDataFolder("");
  CHECK(IsFolder(machine.Outer()));
  CHECK(IsThere(machine.Outer() + L".2.untrusted"));
  UndoDataFolder();
  CHECK(IsThere(machine.Outer()));
  CHECK_FALSE(IsFolder(machine.Outer()));
  CHECK(IsThere(machine.Outer() + L".untrusted"));
  CHECK_FALSE(IsThere(machine.Outer() + L".2.untrusted"));
}

TEST_CASE("rights that an installation took are given back when it is undone, the last one first") {
  const UndoneMachine machine;
  CreateDirectoryW(machine.Outer().c_str(), nullptr);
  CreateDirectoryW(machine.Inner().c_str(), nullptr);
  MakeFile(machine.Inner() + L"\\zs7state.dat");
  FileAccessStub access;
  const std::string before = "O:SYD:AI(A;;0x1301bf;;;AU)";
  access.Have(L"O:SYD:AI(A;;0x1301bf;;;AU)");
  SecureDataFolder("0");
  CHECK(access.TakeGiven().size() == 3);
  UndoDataFolder();
  // The mark that rights were inherited is asked for anew.
  const std::string given = "O:SYD:ARAI(A;;0x1301bf;;;AU)";
  CHECK(access.TakeGiven() ==
        std::vector<GivenAccess>{{"zs7state.dat", given}, {"Z7", given}, {"Brevan", given}});
}

TEST_CASE("what cannot be made as it was is named, and everything else is undone") {
  const UndoneMachine machine;
  SecureDataFolder("");
  const HANDLE held = CreateFileW(machine.Inner().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  REQUIRE(held != INVALID_HANDLE_VALUE);
  UndoNotes notes(kDataFolderNotes);
  CreateDirectoryW(machine.Elsewhere().c_str(), nullptr);
  notes.Add(NoteOf({FolderChange::kMade, machine.Elsewhere(), L""}));
  notes.Add(NoteOf({FolderChange::kMade, machine.Inner(), L""}));
  notes.Add(NoteOf({FolderChange::kMade, machine.Outer() + L"\\gone", L""}));
  CHECK_THROWS_WITH(UndoDataFolder(),
                    doctest::Contains("Z7: cannot be made as it was before (error 32)"));
  CHECK_FALSE(IsThere(machine.Elsewhere()));
  CloseHandle(held);
}

}  // namespace dozewell::setup
