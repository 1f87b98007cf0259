#include <doctest/doctest.h>
#include <windows.h>

#include <map>
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

using Texts = std::vector<std::string>;

constexpr const char* kForAdministrators = "O:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)";
constexpr const char* kForUsers = "O:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)";

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

// A machine on which something was learnt, saves were interrupted, and somebody keeps a report.
class LearntMachine : public Machine {
 public:
  LearntMachine() {
    CreateDirectoryW(Outer().c_str(), nullptr);
    CreateDirectoryW(Inner().c_str(), nullptr);
    for (const wchar_t* const name :
         {L"report.html", L"zs7state.dat", L"zs7state.dat.part", L"zs7state.dat.new",
          L"zs7state.dat.unread", L"cpredict.z7", L"rates.z7"}) {
      WriteFileAt(Inner() + L"\\" + name, "learnt");
    }
  }
};

// These rights for the two folders and each file of learnt data, and for nothing else.
std::vector<GivenAccess> GivenToAll(const std::string& access) {
  std::vector<GivenAccess> given;
  for (const char* const name :
       {"Brevan", "Z7", "zs7state.dat", "zs7state.dat.part", "zs7state.dat.new",
        "zs7state.dat.unread", "cpredict.z7", "rates.z7"}) {
    given.push_back({name, access});
  }
  return given;
}

}  // namespace

TEST_CASE("a data folder that is missing is made, with the one around it") {
  const Machine machine;
  SecureDataFolder("");
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
  SecureDataFolder("");
  for (const std::wstring& path : paths) CHECK_FALSE(EverybodyMayWrite(path));
  CHECK(ReadFileAt(machine.History()) == "learnt");
}

TEST_CASE("making the data folder safe twice changes nothing") {
  const Machine machine;
  SecureDataFolder("");
  WriteFileAt(machine.History(), "learnt");
  SecureDataFolder("");
  CHECK(ReadFileAt(machine.History()) == "learnt");
}

TEST_CASE("a file in the place of a folder is kept aside") {
  const Machine machine;
  WriteFileAt(machine.Outer(), "mine");
  WriteFileAt(machine.Outer() + L".untrusted", "of before");
  SecureDataFolder("");
  CHECK(IsFolder(machine.Inner()));
  CHECK(ReadFileAt(machine.Outer() + L".untrusted") == "of before");
  CHECK(ReadFileAt(machine.Outer() + L".2.untrusted") == "mine");
}

TEST_CASE("a folder in the place of a file is kept aside") {
  const Machine machine;
  SecureDataFolder("");
  REQUIRE(CreateDirectoryW(machine.History().c_str(), nullptr) != 0);
  SecureDataFolder("");
  CHECK_FALSE(IsFolder(machine.History()));
  CHECK(IsFolder(machine.History() + L".untrusted"));
}

TEST_CASE("a file of learnt data with a second name elsewhere is kept aside") {
  const Machine machine;
  SecureDataFolder("");
  const std::wstring elsewhere = machine.Outer() + L"\\elsewhere";
  WriteFileAt(elsewhere, "somebody's");
  REQUIRE(CreateHardLinkW(machine.History().c_str(), elsewhere.c_str(), nullptr) != 0);
  SecureDataFolder("");
  CHECK(ReadFileAt(machine.History()) == "not there");
  CHECK(ReadFileAt(machine.History() + L".untrusted") == "somebody's");
}

TEST_CASE("who can read a new data folder is chosen, and without a choice users can") {
  for (const auto& [choice, access] : std::map<std::string, const char*>{
           {"", kForUsers}, {"0", kForAdministrators}, {"1", kForUsers}}) {
    const Machine machine;
    Texts created;
    const ImportStub<"CreateDirectoryW", decltype(CreateDirectoryW)> create{
        [&created](const wchar_t* path, SECURITY_ATTRIBUTES* attributes) {
          created.push_back(AccessText(attributes->lpSecurityDescriptor,
                                       OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION));
          return CreateDirectoryExW(L"C:\\", path, attributes);
        }};
    CHECK(SecureDataFolder(choice).empty());
    CHECK(created == Texts{access, access});
    TakeSystemCalls();
  }
}

TEST_CASE("the rights of an existing data folder and of all in it are chosen, or kept and told") {
  const LearntMachine machine;
  const std::string name = NarrowToUtf8(machine.Inner());
  FileAccessStub access;
  access.Have(L"O:BAD:P(A;;FA;;;BA)(A;;FA;;;SY)(A;;0x1200a9;;;BU)");
  CHECK(SecureDataFolder("0").empty());
  CHECK(access.TakeGiven() == GivenToAll(kForAdministrators));
  CHECK(SecureDataFolder("") == name +
                                    ": users may read what was learnt, as before; "
                                    "USERSMAYREAD=0 takes that from them");
  CHECK(access.TakeGiven().empty());

  access.Have(L"O:SYD:P(A;;FA;;;BA)(A;;FA;;;SY)");
  CHECK(SecureDataFolder("1").empty());
  CHECK(access.TakeGiven() == GivenToAll(kForUsers));
  CHECK(SecureDataFolder("") == name +
                                    ": only administrators may read what was learnt, as before; "
                                    "USERSMAYREAD=1 lets users read it");
  CHECK(access.TakeGiven().empty());
}

TEST_CASE("rights with which others could change the data folder are taken, reading is kept") {
  const LearntMachine machine;
  FileAccessStub access;
  access.Have(L"O:BAD:(A;;FA;;;BA)(A;;0x1301bf;;;AU)");
  SecureDataFolder("");
  CHECK(access.TakeGiven() == GivenToAll(kForUsers));
  // To write only.
  access.Have(L"O:BAD:(A;;FA;;;BA)(A;;0x2;;;AU)");
  SecureDataFolder("");
  CHECK(access.TakeGiven() == GivenToAll(kForAdministrators));
}

TEST_CASE("who can read the data folder is 0 or 1") {
  const Machine machine;
  CHECK_THROWS_WITH(SecureDataFolder("2"), "USERSMAYREAD: neither 0 nor 1: 2");
  CHECK_FALSE(IsFolder(machine.Outer()));
}

TEST_CASE("a folder that cannot be kept aside is named") {
  const Machine machine;
  WriteFileAt(machine.Outer(), "mine");
  const HANDLE held = CreateFileW(machine.Outer().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  REQUIRE(held != INVALID_HANDLE_VALUE);
  CHECK_THROWS_WITH(SecureDataFolder(""),
                    doctest::Contains("Brevan: cannot be made safe (error 32)"));
  CloseHandle(held);
}

}  // namespace dozewell::setup
