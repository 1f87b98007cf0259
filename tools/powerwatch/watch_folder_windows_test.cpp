#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "powerwatch/watch_folder.h"
#include "support/access_rights_windows.h"
#include "support/program_data_windows.h"
#include "support/system_calls_windows.h"
#include "support/temp_folder.h"

namespace dozewell::powerwatch {

using namespace support;

namespace {

constexpr SECURITY_INFORMATION kOwnerAndRights =
    OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;

// A machine on which the watch was never installed.
class Machine {
 public:
  Machine() : programData_(folder_.Path()), places_(FindPlaces()) {}

  const WatchPlaces& Places() const { return places_; }

 private:
  const TempFolder folder_;
  const ProgramDataAt programData_;
  const WatchPlaces places_;
};

bool Exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// The system's function behind a stub.
template <typename Function>
Function* Kernel(const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

}  // namespace

TEST_CASE("the watch's folder gets the program and an empty file, and goes with them") {
  const Machine machine;
  MakeFolder(machine.Places());
  CHECK(IsFolder(machine.Places().folder));
  CHECK(Exists(machine.Places().program));
  WIN32_FILE_ATTRIBUTE_DATA file = {};
  REQUIRE(GetFileAttributesExW(machine.Places().file.c_str(), GetFileExInfoStandard, &file) != 0);
  CHECK(file.nFileSizeLow == 0);
  DeleteFolder(machine.Places());
  CHECK_FALSE(Exists(machine.Places().folder));
  CHECK_NOTHROW(DeleteFolder(machine.Places()));
}

TEST_CASE("the watch's account may read its folder and append to its file, and nobody else may") {
  const Machine machine;
  std::vector<std::string> access;
  const auto note = [&access](const SECURITY_ATTRIBUTES* attributes) {
    access.push_back(AccessText(attributes->lpSecurityDescriptor, kOwnerAndRights));
  };
  {
    const ImportStub<"CreateDirectoryW", decltype(CreateDirectoryW)> folder{
        [&](const wchar_t* path, SECURITY_ATTRIBUTES* attributes) {
          note(attributes);
          return Kernel<decltype(CreateDirectoryW)>("CreateDirectoryW")(path, attributes);
        }};
    const ImportStub<"CreateFileW", decltype(CreateFileW)> file{
        [&](const wchar_t* path, DWORD rights, DWORD share, SECURITY_ATTRIBUTES* attributes,
            DWORD disposition, DWORD flags, HANDLE model) {
          note(attributes);
          return Kernel<decltype(CreateFileW)>("CreateFileW")(path, rights, share, attributes,
                                                              disposition, flags, model);
        }};
    MakeFolder(machine.Places());
  }
  TakeSystemCalls();
  CHECK(access ==
        std::vector<std::string>{"O:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;LS)",
                                 "O:BAD:P(A;;FA;;;SY)(A;;FA;;;BA)(A;;0x120084;;;LS)"});
}

TEST_CASE("a folder that somebody made in the watch's place is neither used nor deleted") {
  const Machine machine;
  const std::wstring& folder = machine.Places().folder;
  REQUIRE(CreateDirectoryW(folder.c_str(), nullptr) != 0);
  CHECK_THROWS_WITH(MakeFolder(machine.Places()), doctest::Contains("DozewellPowerwatch: exists "));
  CHECK_FALSE(Exists(machine.Places().program));
  LetEverybodyWrite(folder);
  CHECK_THROWS_WITH(DeleteFolder(machine.Places()),
                    doctest::Contains("others may change it, so it is left as it is"));
  CHECK(Exists(folder));
}

TEST_CASE("a folder with something else in it is kept and named") {
  const Machine machine;
  MakeFolder(machine.Places());
  const std::wstring other = machine.Places().folder + L"\\notes.txt";
  const HANDLE file = CreateFileW(other.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  REQUIRE(file != INVALID_HANDLE_VALUE);
  CloseHandle(file);
  CHECK_THROWS_WITH(DeleteFolder(machine.Places()),
                    doctest::Contains("DozewellPowerwatch: cannot be deleted (error 145)"));
  CHECK(Exists(other));
}

TEST_CASE("the watch's program is deleted when its process has ended") {
  const Machine machine;
  MakeFolder(machine.Places());
  int refused = 0;
  {
    const ImportStub<"DeleteFileW", decltype(DeleteFileW)> deletion{[&](const wchar_t* path) {
      if (refused < 2) {
        SetLastError(++refused == 1 ? ERROR_ACCESS_DENIED : ERROR_SHARING_VIOLATION);
        return FALSE;
      }
      return Kernel<decltype(DeleteFileW)>("DeleteFileW")(path);
    }};
    DeleteFolder(machine.Places());
  }
  TakeSystemCalls();
  CHECK(refused == 2);
  CHECK_FALSE(Exists(machine.Places().folder));
}

TEST_CASE("a watch's folder that cannot be filled is not left behind") {
  const Machine machine;
  const ImportStub<"CopyFileW", decltype(CopyFileW)> copy{[](const wchar_t*, const wchar_t*, BOOL) {
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
  }};
  CHECK_THROWS_WITH(MakeFolder(machine.Places()),
                    doctest::Contains("cannot be copied (error 112)"));
  TakeSystemCalls();
  CHECK_FALSE(Exists(machine.Places().folder));
}

}  // namespace dozewell::powerwatch
