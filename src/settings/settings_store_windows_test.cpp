#include <doctest/doctest.h>

#include <string>

#include "settings/settings_store.h"
#include "support/registry_windows.h"

namespace dozewell {

using namespace support;

namespace {

constexpr uint32_t kUntouched = 0xDEADBEEF;

// The out value of a read without deletion; kUntouched when it finds nothing.
uint32_t Read(const wchar_t* name) {
  uint32_t value = kUntouched;
  const bool found = ReadSetting(name, value, false);
  CHECK(found == (value != kUntouched));
  return value;
}

uint32_t ReadFromFallback(const wchar_t* name) {
  uint32_t value = kUntouched;
  const bool found = ReadDefaultSetting(name, value);
  CHECK(found == (value != kUntouched));
  return value;
}

int64_t ReadRun() {
  int64_t value = kUntouched;
  const bool found = ReadLastOptimizerRun(value);
  CHECK(found == (value != kUntouched));
  return value;
}

}  // namespace

TEST_CASE("a setting comes from the first of Current, Branding and Default that has it") {
  const CleanProductKeys clean;
  for (int present = 0; present < 8; ++present) {
    CAPTURE(present);
    const wchar_t* const paths[] = {kCurrent, kBranding, kDefault};
    for (uint32_t key = 0; key < 3; ++key) {
      DeleteTree(paths[key]);
      CreateKey(paths[key]);
      if ((present >> key & 1) != 0) SetValue(paths[key], L"TotalAttempts", Dword(key + 1));
    }
    const uint32_t expected[] = {kUntouched, 1, 2, 1, 3, 1, 2, 1};
    const uint32_t expectedFromFallback[] = {kUntouched, kUntouched, 2, 2, 3, 3, 2, 2};
    CHECK(Read(L"TotalAttempts") == expected[present]);
    CHECK(ReadFromFallback(L"TotalAttempts") == expectedFromFallback[present]);
    CHECK(BrandingPresent);
  }
}

TEST_CASE("a setting is found in Default when the other keys do not exist") {
  const CleanProductKeys clean;
  SetValue(kDefault, L"EnableZ7Feature", Dword(7));
  CHECK(Read(L"EnableZ7Feature") == 7);
  CHECK(ReadFromFallback(L"EnableZ7Feature") == 7);
}

TEST_CASE("nothing is found when no key exists") {
  const CleanProductKeys clean;
  CHECK(Read(L"EnableZ7Feature") == kUntouched);
  CHECK(ReadFromFallback(L"EnableZ7Feature") == kUntouched);
  CHECK(ReadRun() == kUntouched);
  CHECK_FALSE(KeyExists(kCurrent));
}

TEST_CASE("Branding is given up for good when it first fails to open") {
  const CleanProductKeys clean;
  SetValue(kDefault, L"DebugLogging", Dword(3));
  CHECK(BrandingPresent);
  CHECK(Read(L"DebugLogging") == 3);
  CHECK_FALSE(BrandingPresent);
  SetValue(kBranding, L"DebugLogging", Dword(2));
  SetValue(kBranding, L"LastOptimizerRun", Dword(2));
  CHECK(Read(L"DebugLogging") == 3);
  CHECK(ReadFromFallback(L"DebugLogging") == 3);
  CHECK(ReadRun() == kUntouched);
  CHECK_FALSE(BrandingPresent);
}

TEST_CASE("a read that Current answers does not look for Branding") {
  const CleanProductKeys clean;
  SetValue(kCurrent, L"DebugLogging", Dword(1));
  CHECK(Read(L"DebugLogging") == 1);
  CHECK(BrandingPresent);
}

TEST_CASE("a setting of any type is taken when it has at most four bytes") {
  const CleanProductKeys clean;
  struct Row {
    RegistryValue value;
    uint32_t expected;
  };
  const Row rows[] = {
      {{kRegBinary, {0x78, 0x56, 0x34, 0x12}}, 0x12345678},
      {{kRegBinary, {0x78, 0x56, 0x34}}, 0x00345678},
      {{kRegBinary, {0x78}}, 0x00000078},
      {{kRegBinary, {}}, 0},
      {Text(L"A"), 0x00000041},
      {{kRegSz, {0x41, 0, 0x42, 0}}, 0x00420041},
      {{kRegDword, {0x78, 0x56}}, 0x00005678},
  };
  for (const Row& row : rows) {
    CAPTURE(row.expected);
    for (const wchar_t* path : {kCurrent, kBranding, kDefault}) {
      CreateKey(kBranding);
      SetValue(path, L"TotalAttempts", row.value);
      CHECK(Read(L"TotalAttempts") == row.expected);
      DeleteTree(path);
    }
  }
}

TEST_CASE("a setting of more than four bytes counts as absent") {
  const CleanProductKeys clean;
  for (const RegistryValue& tooLong :
       {RegistryValue{kRegBinary, {1, 2, 3, 4, 5}}, Qword(1), Text(L"12")}) {
    SetValue(kCurrent, L"TotalAttempts", tooLong);
    SetValue(kBranding, L"TotalAttempts", tooLong);
    SetValue(kDefault, L"TotalAttempts", tooLong);
    CHECK(Read(L"TotalAttempts") == kUntouched);
    SetValue(kDefault, L"TotalAttempts", Dword(3));
    CHECK(Read(L"TotalAttempts") == 3);
    SetValue(kBranding, L"TotalAttempts", Dword(2));
    CHECK(Read(L"TotalAttempts") == 2);
  }
}

TEST_CASE("deleting after the read takes the value out of Current only") {
  const CleanProductKeys clean;
  SetValue(kCurrent, L"HA_AC", Dword(1));
  SetValue(kCurrent, L"HA_DC", Dword(8));
  SetValue(kBranding, L"HA_AC", Dword(2));
  uint32_t value = kUntouched;
  CHECK(ReadSetting(L"HA_AC", value, true));
  CHECK(value == 1);
  CHECK_FALSE(GetValue(kCurrent, L"HA_AC"));
  CHECK(GetValue(kCurrent, L"HA_DC") == Dword(8));
  CHECK(ReadSetting(L"HA_AC", value, true));
  CHECK(value == 2);
  CHECK(GetValue(kBranding, L"HA_AC") == Dword(2));
}

TEST_CASE("deleting after the read takes out a value that could not be read, too") {
  const CleanProductKeys clean;
  SetValue(kCurrent, L"HA_AC", Qword(1));
  SetValue(kDefault, L"HA_AC", Dword(3));
  uint32_t value = kUntouched;
  CHECK(ReadSetting(L"HA_AC", value, true));
  CHECK(value == 3);
  CHECK_FALSE(GetValue(kCurrent, L"HA_AC"));

  SetValue(kCurrent, L"HA_DC", Qword(1));
  value = kUntouched;
  CHECK_FALSE(ReadSetting(L"HA_DC", value, true));
  CHECK(value == kUntouched);
  CHECK_FALSE(GetValue(kCurrent, L"HA_DC"));
}

TEST_CASE("a read without deletion leaves the value where it is") {
  const CleanProductKeys clean;
  SetValue(kCurrent, L"HA_AC", Dword(1));
  CHECK(Read(L"HA_AC") == 1);
  CHECK(GetValue(kCurrent, L"HA_AC") == Dword(1));
}

TEST_CASE("a caller's own number stands for a setting that no key has") {
  const CleanProductKeys clean;
  CHECK(SettingOr(L"TotalAttempts", 7) == 7);
  SetValue(kDefault, L"TotalAttempts", Dword(3));
  CHECK(SettingOr(L"TotalAttempts", 7) == 3);
  SetValue(kCurrent, L"TotalAttempts", Dword(0));
  CHECK(SettingOr(L"TotalAttempts", 7) == 0);
  CHECK(GetValue(kCurrent, L"TotalAttempts") == Dword(0));
}

TEST_CASE("a setting is written as a REG_DWORD to Current, which the first write creates") {
  const CleanProductKeys clean;
  CreateKey(kBranding);
  CreateKey(kDefault);
  CHECK(WriteSetting(L"ServiceStatus", 0xFFFFFFFE));
  CHECK(GetValue(kCurrent, L"ServiceStatus") == Dword(0xFFFFFFFE));
  CHECK(Read(L"ServiceStatus") == 0xFFFFFFFE);
  CHECK(WriteSetting(L"ServiceStatus", 0));
  CHECK(GetValue(kCurrent, L"ServiceStatus") == Dword(0));
  CHECK_FALSE(GetValue(kBranding, L"ServiceStatus"));
  CHECK_FALSE(GetValue(kDefault, L"ServiceStatus"));
}

TEST_CASE("a write replaces a value of another type and length") {
  const CleanProductKeys clean;
  SetValue(kCurrent, L"ServiceStatus", Qword(1));
  CHECK(WriteSetting(L"ServiceStatus", 1));
  CHECK(GetValue(kCurrent, L"ServiceStatus") == Dword(1));
}

TEST_CASE("a setting without a name is neither written nor read") {
  const CleanProductKeys clean;
  for (const wchar_t* name : {static_cast<const wchar_t*>(nullptr), L""}) {
    CHECK_FALSE(WriteSetting(name, 1));
    CHECK_FALSE(KeyExists(kCurrent));
  }
  // The registry lets a key have an unnamed value.
  SetValue(kCurrent, L"", Dword(1));
  SetValue(kBranding, L"", Dword(1));
  SetValue(kDefault, L"", Dword(1));
  for (const wchar_t* name : {static_cast<const wchar_t*>(nullptr), L""}) {
    CHECK_FALSE(WriteSetting(name, 5));
    CHECK(GetValue(kCurrent, L"") == Dword(1));
    CHECK(Read(name) == kUntouched);
    CHECK(ReadFromFallback(name) == kUntouched);
    uint32_t value = kUntouched;
    CHECK_FALSE(ReadSetting(name, value, true));
    CHECK(value == kUntouched);
    CHECK(GetValue(kCurrent, L"") == Dword(1));
  }
}

TEST_CASE("the last optimizer run is eight bytes in Current") {
  const CleanProductKeys clean;
  for (const int64_t seconds : {int64_t{0}, int64_t{0x123456789ABCDEF0}, int64_t{-2}}) {
    CHECK(WriteLastOptimizerRun(seconds));
    CHECK(GetValue(kCurrent, L"LastOptimizerRun") == Qword(seconds));
    CHECK(ReadRun() == seconds);
  }
}

TEST_CASE("the last optimizer run of the fallback keys is four bytes, widened with zeros") {
  const CleanProductKeys clean;
  CreateKey(kBranding);
  SetValue(kDefault, L"LastOptimizerRun", Dword(0xFFFFFFFF));
  CHECK(ReadRun() == 0xFFFFFFFF);
  SetValue(kBranding, L"LastOptimizerRun", Dword(0x80000000));
  CHECK(ReadRun() == 0x80000000);
  SetValue(kBranding, L"LastOptimizerRun", Qword(5));
  CHECK(ReadRun() == 0xFFFFFFFF);
  SetValue(kDefault, L"LastOptimizerRun", Qword(5));
  CHECK(ReadRun() == kUntouched);
}

TEST_CASE("a last optimizer run in Current is taken when it has at most eight bytes") {
  const CleanProductKeys clean;
  SetValue(kDefault, L"LastOptimizerRun", Dword(3));
  SetValue(kCurrent, L"LastOptimizerRun", Dword(0xFFFFFFFF));
  CHECK(ReadRun() == 0xFFFFFFFF);
  SetValue(kCurrent, L"LastOptimizerRun", {kRegBinary, {1, 2, 3, 4, 5, 6, 7, 8, 9}});
  CHECK(ReadRun() == 3);
}

}  // namespace dozewell
