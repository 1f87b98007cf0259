#include <doctest/doctest.h>
#include <windows.h>
// After windows.h, which they need.
#include <aclapi.h>
#include <sddl.h>

#include <string>
#include <vector>

#include "setup/system_steps.h"
#include "support/program_data_windows.h"
#include "support/temp_folder.h"

namespace dozewell::setup {

using namespace support;

namespace {

constexpr DWORD kWriting = FILE_WRITE_DATA | FILE_APPEND_DATA | FILE_DELETE_CHILD | DELETE |
                           WRITE_DAC | WRITE_OWNER | GENERIC_WRITE | GENERIC_ALL;

void WriteFileAt(const std::wstring& path, const std::string& text) {
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  REQUIRE(file != INVALID_HANDLE_VALUE);
  DWORD written = 0;
  CHECK(WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0);
  CloseHandle(file);
}

std::string ReadFileAt(const std::wstring& path) {
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return "not there";
  char text[100];
  DWORD read = 0;
  ReadFile(file, text, sizeof(text), &read, nullptr);
  CloseHandle(file);
  return {text, read};
}

void LetEverybodyWrite(const std::wstring& path) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  REQUIRE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
              L"D:P(A;OICI;FA;;;WD)", SDDL_REVISION_1, &descriptor, nullptr) != 0);
  CHECK(SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor) != 0);
  LocalFree(descriptor);
}

bool EverybodyMayWrite(const std::wstring& path) {
  BYTE everybody[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof(everybody);
  REQUIRE(CreateWellKnownSid(WinWorldSid, nullptr, everybody, &size) != 0);
  std::vector<BYTE> descriptor(4096);
  REQUIRE(GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(),
                           static_cast<DWORD>(descriptor.size()), &size) != 0);
  PACL list = nullptr;
  BOOL present = FALSE;
  BOOL defaulted = FALSE;
  REQUIRE(GetSecurityDescriptorDacl(descriptor.data(), &present, &list, &defaulted) != 0);
  REQUIRE(list != nullptr);
  for (DWORD i = 0; i < list->AceCount; ++i) {
    void* entry = nullptr;
    REQUIRE(GetAce(list, i, &entry) != 0);
    auto* const allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    if (EqualSid(&allowed->SidStart, everybody) != 0 && (allowed->Mask & kWriting) != 0) {
      return true;
    }
  }
  return false;
}

class Machine {
 public:
  Machine() : programData_(folder_.Path()) {}

  std::wstring Outer() const { return folder_.File(L"Brevan"); }
  std::wstring Inner() const { return Outer() + L"\\Z7"; }
  std::wstring History() const { return Inner() + L"\\zs7state.dat"; }

 private:
  const TempFolder folder_;
  const ProgramDataAt programData_;
};

}  // namespace

TEST_CASE("a data folder that is missing is made, with the one around it") {
  const Machine machine;
  SecureDataFolder();
  CHECK(IsFolder(machine.Inner()));
  CHECK_FALSE(EverybodyMayWrite(machine.Outer()));
  CHECK_FALSE(EverybodyMayWrite(machine.Inner()));
}

TEST_CASE("a data folder that everybody may write to is made safe and keeps what is in it") {
  const Machine machine;
  for (const std::wstring& path : {machine.Outer(), machine.Inner()}) {
    REQUIRE(CreateDirectoryW(path.c_str(), nullptr) != 0);
  }
  WriteFileAt(machine.History(), "learnt");
  const std::vector<std::wstring> paths = {machine.History(), machine.Inner(), machine.Outer()};
  for (const std::wstring& path : paths) {
    LetEverybodyWrite(path);
    REQUIRE(EverybodyMayWrite(path));
  }
  SecureDataFolder();
  for (const std::wstring& path : paths) CHECK_FALSE(EverybodyMayWrite(path));
  CHECK(ReadFileAt(machine.History()) == "learnt");
}

TEST_CASE("making the data folder safe twice changes nothing") {
  const Machine machine;
  SecureDataFolder();
  WriteFileAt(machine.History(), "learnt");
  SecureDataFolder();
  CHECK(ReadFileAt(machine.History()) == "learnt");
}

TEST_CASE("a file in the place of a folder is kept aside") {
  const Machine machine;
  WriteFileAt(machine.Outer(), "mine");
  WriteFileAt(machine.Outer() + L".untrusted", "of before");
  SecureDataFolder();
  CHECK(IsFolder(machine.Inner()));
  CHECK(ReadFileAt(machine.Outer() + L".untrusted") == "of before");
  CHECK(ReadFileAt(machine.Outer() + L".2.untrusted") == "mine");
}

TEST_CASE("a folder in the place of a file is kept aside") {
  const Machine machine;
  SecureDataFolder();
  REQUIRE(CreateDirectoryW(machine.History().c_str(), nullptr) != 0);
  SecureDataFolder();
  CHECK_FALSE(IsFolder(machine.History()));
  CHECK(IsFolder(machine.History() + L".untrusted"));
}

TEST_CASE("a file of learnt data with a second name elsewhere is kept aside") {
  const Machine machine;
  SecureDataFolder();
  const std::wstring elsewhere = machine.Outer() + L"\\elsewhere";
  WriteFileAt(elsewhere, "somebody's");
  REQUIRE(CreateHardLinkW(machine.History().c_str(), elsewhere.c_str(), nullptr) != 0);
  SecureDataFolder();
  CHECK(ReadFileAt(machine.History()) == "not there");
  CHECK(ReadFileAt(machine.History() + L".untrusted") == "somebody's");
}

TEST_CASE("a folder that cannot be kept aside is named") {
  const Machine machine;
  WriteFileAt(machine.Outer(), "mine");
  const HANDLE held = CreateFileW(machine.Outer().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  REQUIRE(held != INVALID_HANDLE_VALUE);
  CHECK_THROWS_WITH(SecureDataFolder(),
                    doctest::Contains("Brevan: cannot be made safe (error 32)"));
  CloseHandle(held);
}

}  // namespace dozewell::setup
