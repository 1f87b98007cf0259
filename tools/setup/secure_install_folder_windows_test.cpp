#include <doctest/doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "base/utf8.h"
#include "setup/system_steps.h"
#include "support/access_rights_windows.h"
#include "support/program_data_windows.h"
#include "support/system_calls_windows.h"
#include "support/temp_folder.h"

namespace dozewell::setup {

using namespace support;

namespace {

constexpr char kRefused[] =
    ": others may change it; choose an INSTALLFOLDER that only administrators can change";

void CreateFolder(const std::wstring& path) {
  REQUIRE(CreateDirectoryW(path.c_str(), nullptr) != 0);
}

void CreateEmptyFile(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  REQUIRE(file != INVALID_HANDLE_VALUE);
  CloseHandle(file);
}

void Secure(const std::wstring& folder) { SecureInstallFolder(NarrowToUtf8(folder)); }

void CheckRefused(const std::wstring& folder, const std::wstring& because) {
  const std::string refusal = NarrowToUtf8(because) + kRefused;
  CHECK_THROWS_WITH(Secure(folder), refusal.c_str());
}

}  // namespace

TEST_CASE("a missing folder for the programs is made for administrators, with those around it") {
  const TempFolder scratch;
  const std::wstring folder = scratch.File(L"a") + L"\\b";
  std::vector<std::string> created;
  {
    const ImportStub<"CreateDirectoryW", decltype(CreateDirectoryW)> create{
        [&](const wchar_t* path, SECURITY_ATTRIBUTES* attributes) -> BOOL {
          created.push_back(NarrowToUtf8(path));
          CHECK(AccessText(attributes->lpSecurityDescriptor,
                           OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION) ==
                "O:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)");
          return CreateDirectoryExW(L"C:\\", path, attributes);
        }};
    SecureInstallFolder(NarrowToUtf8(folder) + "\\.");
  }
  TakeSystemCalls();
  CHECK(created ==
        std::vector<std::string>{NarrowToUtf8(scratch.File(L"a")), NarrowToUtf8(folder)});
  CHECK(IsFolder(folder));
}

TEST_CASE("a folder that only administrators can change is used as it is, again and again") {
  const TempFolder scratch;
  const std::wstring folder = scratch.File(L"a");
  Secure(folder);
  CreateEmptyFile(folder + L"\\program.exe");
  Secure(folder);
  CHECK_NOTHROW(Secure(folder));
}

TEST_CASE("a folder that others may change is refused") {
  const TempFolder scratch;
  const std::wstring folder = scratch.File(L"a");
  CreateFolder(folder);
  LetEverybodyWrite(folder);
  CheckRefused(folder, folder);
}

TEST_CASE("a folder in one that others may rename or delete is refused, and not made") {
  const TempFolder scratch;
  const std::wstring outer = scratch.File(L"a");
  CreateFolder(outer);
  LetEverybodyWrite(outer);
  CheckRefused(outer + L"\\b", outer);
  CHECK_FALSE(IsFolder(outer + L"\\b"));
}

TEST_CASE("a folder with something in it that others may change is refused") {
  const TempFolder scratch;
  const std::wstring folder = scratch.File(L"a");
  Secure(folder);
  CreateEmptyFile(folder + L"\\powrprof.dll");
  LetEverybodyWrite(folder + L"\\powrprof.dll");
  CheckRefused(folder, folder + L"\\powrprof.dll");
}

TEST_CASE("a file with a second name in the folder is refused") {
  const TempFolder scratch;
  const std::wstring folder = scratch.File(L"a");
  Secure(folder);
  CreateEmptyFile(scratch.File(L"elsewhere"));
  const std::wstring link = folder + L"\\program.exe";
  REQUIRE(CreateHardLinkW(link.c_str(), scratch.File(L"elsewhere").c_str(), nullptr) != 0);
  CHECK_THROWS_WITH(Secure(folder), doctest::Contains("program.exe: it is a link; choose"));
}

TEST_CASE("a file in the place of the folder cannot be used") {
  const TempFolder scratch;
  CreateEmptyFile(scratch.File(L"a"));
  CHECK_THROWS_WITH(Secure(scratch.File(L"a")), doctest::Contains("a: it is no folder; choose"));
}

TEST_CASE(
    "the folder for the programs is deleted with the one around it, as far as they are empty") {
  const TempFolder scratch;
  const std::wstring outer = scratch.File(L"a");
  const std::wstring folder = outer + L"\\b";
  Secure(folder);
  CreateEmptyFile(folder + L"\\of somebody");
  RemoveInstallFolder(NarrowToUtf8(folder) + "\\.");
  CHECK(IsFolder(folder));
  DeleteFileW((folder + L"\\of somebody").c_str());
  CreateEmptyFile(outer + L"\\of somebody");
  RemoveInstallFolder(NarrowToUtf8(folder) + "\\.");
  CHECK_FALSE(IsFolder(folder));
  CHECK(IsFolder(outer));
  DeleteFileW((outer + L"\\of somebody").c_str());
  RemoveInstallFolder(NarrowToUtf8(folder) + "\\.");
  CHECK_FALSE(IsFolder(outer));
  CHECK(IsFolder(scratch.Path()));
}

TEST_CASE("a folder elsewhere than on a drive is refused") {
  CHECK_THROWS_WITH(SecureInstallFolder("\\\\server\\share\\a"),
                    "\\\\server\\share\\a: is no folder on a drive of this machine");
  CHECK_THROWS_WITH(SecureInstallFolder("C:\\"), "C:\\: is no folder on a drive of this machine");
}

}  // namespace dozewell::setup
