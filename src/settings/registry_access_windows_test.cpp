// Which keys are opened with which rights.

#include <doctest/doctest.h>
#include <windows.h>

#include <bit>
#include <cstdint>
#include <functional>
#include <string>

#include "settings/predictor_values.h"
#include "settings/settings_store.h"
#include "support/calls.h"
#include "support/registry_windows.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

constexpr char kPredictors[] = "SOFTWARE\\Corisk\\Z7\\Current\\Predictors";
constexpr char kPredictorsInCapitals[] = "SOFTWARE\\Corisk\\Z7\\CURRENT\\Predictors";

std::string Opened(const wchar_t* path, REGSAM rights) {
  return SystemCall("RegOpenKeyExW", HKEY_LOCAL_MACHINE, path, 0, rights, kMemory);
}

std::string Created(const wchar_t* path, REGSAM rights) {
  return SystemCall("RegCreateKeyExW", HKEY_LOCAL_MACHINE, path, 0, nullptr,
                    REG_OPTION_NON_VOLATILE, rights, nullptr, kMemory, nullptr);
}

std::string OpenedNarrow(HKEY parent, const char* path) {
  return SystemCall("RegOpenKeyExA", parent, path, 0, KEY_READ, kMemory);
}

std::string CreatedNarrow(HKEY parent, const char* path) {
  return SystemCall("RegCreateKeyExA", parent, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                    KEY_ALL_ACCESS, nullptr, kMemory, nullptr);
}

}  // namespace

TEST_CASE("each key is opened for what is done with it, and for no more") {
  const CleanProductKeys clean;
  constexpr LSTATUS missing = ERROR_FILE_NOT_FOUND;
  const HKEY predictors = std::bit_cast<HKEY>(uint64_t{0x700});
  const ImportStub<"RegOpenKeyExW", decltype(RegOpenKeyExW)> open{missing};
  const ImportStub<"RegCreateKeyExW", decltype(RegCreateKeyExW)> create{missing};
  // The predictors' key is there, and none of its sections.
  const ImportStub<"RegOpenKeyExA", decltype(RegOpenKeyExA)> openNarrow{
      [&](HKEY parent, const char*, DWORD, REGSAM, HKEY* key) {
        *key = predictors;
        return parent == predictors ? missing : LSTATUS{ERROR_SUCCESS};
      }};
  const ImportStub<"RegCreateKeyExA", decltype(RegCreateKeyExA)> createNarrow{
      [&](HKEY parent, const char*, DWORD, char*, DWORD, REGSAM, SECURITY_ATTRIBUTES*, HKEY* key,
          DWORD*) {
        *key = predictors;
        return parent == predictors ? missing : LSTATUS{ERROR_SUCCESS};
      }};
  const ImportStub<"RegCloseKey", decltype(RegCloseKey)> close{};

  const Calls fallbacks = {Opened(kBranding, KEY_READ), Opened(kDefault, KEY_READ)};
  const std::string closed = SystemCall("RegCloseKey", predictors);
  uint32_t value = 0;
  int64_t run = 0;
  struct Row {
    std::function<void()> access;
    Calls calls;
  };
  const Row rows[] = {
      {[&] { ReadSetting(L"X", value, false); }, Joined({{Opened(kCurrent, KEY_READ)}, fallbacks})},
      {[&] { ReadSetting(L"X", value, true); },
       Joined({{Opened(kCurrent, KEY_READ | KEY_SET_VALUE | KEY_CREATE_SUB_KEY)}, fallbacks})},
      {[&] { ReadDefaultSetting(L"X", value); }, fallbacks},
      {[] { WriteSetting(L"X", 1); }, {Created(kCurrent, KEY_WRITE)}},
      {[&] { ReadLastOptimizerRun(run); }, Joined({{Opened(kCurrent, KEY_READ)}, fallbacks})},
      {[] { WriteLastOptimizerRun(1); }, {Created(kCurrent, KEY_WRITE)}},
      {[] { ReadPredictorValue("Section", "X"); },
       Joined({{OpenedNarrow(HKEY_LOCAL_MACHINE, kPredictorsInCapitals),
                OpenedNarrow(predictors, "Section")},
               fallbacks,
               {closed}})},
      {[] { WritePredictorValue("Section", "X", "1"); },
       {CreatedNarrow(HKEY_LOCAL_MACHINE, kPredictors), CreatedNarrow(predictors, "Section"),
        closed}},
  };
  for (const Row& row : rows) {
    BrandingPresent = true;
    row.access();
    CHECK(TakeSystemCalls() == row.calls);
  }
}

TEST_CASE("a fallback's predictor values are opened for reading below it") {
  const CleanProductKeys clean;
  const HKEY branding = std::bit_cast<HKEY>(uint64_t{0x800});
  const ImportStub<"RegOpenKeyExW", decltype(RegOpenKeyExW)> open{
      [&](HKEY, const wchar_t*, DWORD, REGSAM, HKEY* key) -> LSTATUS {
        *key = branding;
        return ERROR_SUCCESS;
      }};
  const ImportStub<"RegOpenKeyExA", decltype(RegOpenKeyExA)> openNarrow{
      LSTATUS{ERROR_FILE_NOT_FOUND}};
  const ImportStub<"RegCloseKey", decltype(RegCloseKey)> close{};
  ReadPredictorValue("Section", "X");
  const std::string looked = OpenedNarrow(branding, "Predictors");
  const std::string closed = SystemCall("RegCloseKey", branding);
  CHECK(TakeSystemCalls() == Calls{OpenedNarrow(HKEY_LOCAL_MACHINE, kPredictorsInCapitals),
                                   Opened(kBranding, KEY_READ), looked, closed,
                                   Opened(kDefault, KEY_READ), looked, closed});
}

}  // namespace dozewell
