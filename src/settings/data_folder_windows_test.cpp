#include <doctest/doctest.h>
#include <windows.h>

#include <optional>
#include <string>

#include "settings/data_folder.h"
#include "support/registry_windows.h"

namespace dozewell {

using namespace support;

namespace {

constexpr wchar_t kProfileList[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";

// Moves the system's program-data folder for the time of a test.
class ProgramDataAt {
 public:
  explicit ProgramDataAt(const std::wstring& path)
      : original_(GetValue(kProfileList, L"ProgramData")) {
    SetValue(kProfileList, L"ProgramData", Text(path));
  }
  ~ProgramDataAt() {
    if (original_) SetValue(kProfileList, L"ProgramData", *original_);
  }
  ProgramDataAt(const ProgramDataAt&) = delete;
  ProgramDataAt& operator=(const ProgramDataAt&) = delete;

 private:
  const std::optional<RegistryValue> original_;
};

// Leaves alone what is not empty.
void RemoveDataFolderIn(const std::wstring& programData) {
  RemoveDirectoryW((programData + L"\\Brevan\\Z7").c_str());
  RemoveDirectoryW((programData + L"\\Brevan").c_str());
}

// An empty folder, removed at the end together with the data folder in it.
class ScratchFolder {
 public:
  ScratchFolder() {
    wchar_t temp[MAX_PATH];
    REQUIRE(GetTempPathW(MAX_PATH, temp) != 0);
    path_ = temp + std::to_wstring(GetCurrentProcessId()) + L".dozewell";
    REQUIRE(CreateDirectoryW(path_.c_str(), nullptr) != 0);
  }
  ~ScratchFolder() {
    RemoveDataFolderIn(path_);
    RemoveDirectoryW(path_.c_str());
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::wstring& path() const { return path_; }

 private:
  std::wstring path_;
};

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

TEST_CASE("the data folder is below the system's program data and exists") {
  wchar_t programData[MAX_PATH];
  REQUIRE(GetEnvironmentVariableW(L"ProgramData", programData, MAX_PATH) != 0);
  CHECK(GetDataFolder() == programData + std::wstring(L"\\Brevan\\Z7\\"));
  CHECK(IsFolder(GetDataFolder()));
  RemoveDataFolderIn(programData);
}

TEST_CASE("the whole chain of the data folder is created when missing") {
  const ScratchFolder scratch;
  const ProgramDataAt programData(scratch.path());
  const std::wstring folder = scratch.path() + L"\\Brevan\\Z7\\";
  CHECK(DataFolderPath() == folder);
  CHECK_FALSE(IsFolder(folder));
  CHECK(GetDataFolder() == folder);
  CHECK(IsFolder(folder));
  CHECK(GetDataFolder() == folder);
}

TEST_CASE("a data folder that cannot be created is named all the same") {
  const ScratchFolder scratch;
  const ProgramDataAt programData(scratch.path());
  const HANDLE file = CreateFileW((scratch.path() + L"\\Brevan").c_str(), GENERIC_WRITE, 0, nullptr,
                                  CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  REQUIRE(file != INVALID_HANDLE_VALUE);
  CHECK(GetDataFolder() == scratch.path() + L"\\Brevan\\Z7\\");
  CHECK_FALSE(IsFolder(scratch.path() + L"\\Brevan"));
  CloseHandle(file);
}

TEST_CASE("there is no data folder when the system has no program data") {
  const ScratchFolder scratch;
  const ProgramDataAt programData(scratch.path() + L"\\missing");
  CHECK(DataFolderPath().empty());
  CHECK(GetDataFolder().empty());
}

}  // namespace dozewell
