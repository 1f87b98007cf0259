#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "setup/system_steps.h"
#include "support/program_data_windows.h"
#include "support/registry_windows.h"
#include "support/temp_folder.h"

namespace dozewell::setup {

using namespace support;

namespace {

void CreateFileAt(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  REQUIRE(file != INVALID_HANDLE_VALUE);
  CloseHandle(file);
}

bool Exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// A machine with learnt data and settings.
class UsedMachine {
 public:
  UsedMachine() : programData_(folder_.Path()) {
    CreateDirectoryW(Outer().c_str(), nullptr);
    CreateDirectoryW(Inner().c_str(), nullptr);
    for (const wchar_t* const suffix : {L"", L".part", L".new", L".unread"}) {
      CreateFileAt(Inner() + L"\\zs7state.dat" + suffix);
      CreateFileAt(Inner() + L"\\cpredict.z7" + suffix);
      CreateFileAt(Inner() + L"\\rates.z7" + suffix);
    }
    SetValue(kCurrent, L"ServiceStatus", Dword(1));
    SetValue(kCurrent + std::wstring(L"\\Predictors\\CyclicProbabilityPredictor"), L"Strength",
             Text(L"1"));
  }

  std::wstring Outer() const { return folder_.File(L"Brevan"); }
  std::wstring Inner() const { return Outer() + L"\\Z7"; }

 private:
  const TempFolder folder_;
  const ProgramDataAt programData_;
  const CleanProductKeys keys_;
};

constexpr wchar_t kRoot[] = L"SOFTWARE\\Corisk";

}  // namespace

TEST_CASE("learnt data and live settings are removed with what they were in") {
  const UsedMachine machine;
  RemoveLearntData();
  CHECK_FALSE(Exists(machine.Outer()));
  CHECK_FALSE(KeyExists(kRoot));
}

TEST_CASE("what belongs to others stays, with the folders and keys that it is in") {
  const UsedMachine machine;
  CreateFileAt(machine.Inner() + L"\\zs7state.dat.untrusted");
  SetValue(kBranding, L"HistoryLimit", Dword(90));
  RemoveLearntData();
  CHECK_FALSE(Exists(machine.Inner() + L"\\zs7state.dat"));
  CHECK_FALSE(Exists(machine.Inner() + L"\\cpredict.z7"));
  CHECK_FALSE(Exists(machine.Inner() + L"\\rates.z7"));
  CHECK(Exists(machine.Inner() + L"\\zs7state.dat.untrusted"));
  CHECK_FALSE(KeyExists(kCurrent));
  CHECK(GetValue(kBranding, L"HistoryLimit") == Dword(90));
}

TEST_CASE("removing learnt data twice is no error") {
  const UsedMachine machine;
  RemoveLearntData();
  RemoveLearntData();
  CHECK_FALSE(Exists(machine.Outer()));
}

TEST_CASE("a file that somebody holds open is named, and the rest is left") {
  const UsedMachine machine;
  const std::wstring path = machine.Inner() + L"\\zs7state.dat";
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  REQUIRE(file != INVALID_HANDLE_VALUE);
  CHECK_THROWS_WITH(RemoveLearntData(),
                    doctest::Contains("zs7state.dat: cannot be deleted (error 32)"));
  CloseHandle(file);
  CHECK(KeyExists(kCurrent));
}

}  // namespace dozewell::setup
