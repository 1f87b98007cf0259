#include <doctest/doctest.h>
#include <shlobj.h>
#include <windows.h>

#include <string>

#include "settings/data_folder.h"
#include "support/calls.h"
#include "support/program_data_windows.h"
#include "support/system_calls_windows.h"
#include "support/temp_folder.h"

namespace dozewell {

using namespace support;

namespace {

// Folders that are not empty stay.
void RemoveDataFolderIn(const std::wstring& programData) {
  RemoveDirectoryW((programData + L"\\Brevan\\Z7").c_str());
  RemoveDirectoryW((programData + L"\\Brevan").c_str());
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
  const TempFolder scratch;
  const ProgramDataAt programData(scratch.Path());
  const std::wstring folder = scratch.Path() + L"\\Brevan\\Z7\\";
  CHECK(DataFolderPath() == folder);
  CHECK_FALSE(IsFolder(folder));
  CHECK(GetDataFolder() == folder);
  CHECK(IsFolder(folder));
  CHECK(GetDataFolder() == folder);
}

TEST_CASE("a data folder that cannot be created is named all the same") {
  const TempFolder scratch;
  const ProgramDataAt programData(scratch.Path());
  const HANDLE file = CreateFileW((scratch.Path() + L"\\Brevan").c_str(), GENERIC_WRITE, 0, nullptr,
                                  CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  REQUIRE(file != INVALID_HANDLE_VALUE);
  CHECK(GetDataFolder() == scratch.Path() + L"\\Brevan\\Z7\\");
  CHECK_FALSE(IsFolder(scratch.Path() + L"\\Brevan"));
  CloseHandle(file);
}

TEST_CASE("the system is asked for its program data, and to create the folder below it") {
  static wchar_t programData[] = L"Z:\\missing";
  const ImportStub<"SHGetKnownFolderPath", decltype(SHGetKnownFolderPath)> get{
      [](const GUID&, DWORD, HANDLE, wchar_t** path) {
        *path = programData;
        return S_OK;
      }};
  wchar_t* freed = nullptr;
  const ImportStub<"CoTaskMemFree", decltype(CoTaskMemFree)> release{
      [&](void* memory) { freed = static_cast<wchar_t*>(memory); }};
  const ImportStub<"SHCreateDirectoryExW", decltype(SHCreateDirectoryExW)> create;
  CHECK(GetDataFolder() == L"Z:\\missing\\Brevan\\Z7\\");
  CHECK(freed == programData);
  CHECK(TakeSystemCalls() ==
        Calls{SystemCall("SHGetKnownFolderPath", FOLDERID_ProgramData, 0, nullptr, kMemory),
              SystemCall("CoTaskMemFree", kMemory),
              SystemCall("SHCreateDirectoryExW", nullptr, L"Z:\\missing\\Brevan\\Z7", nullptr)});
}

TEST_CASE("there is no data folder when the system has no program data") {
  const TempFolder scratch;
  const ProgramDataAt programData(scratch.Path() + L"\\missing");
  CHECK(DataFolderPath().empty());
  CHECK(GetDataFolder().empty());
}

}  // namespace dozewell
