#include <doctest/doctest.h>
#include <windows.h>

// After windows.h, which it needs.
#include <powrprof.h>

#include <bit>
#include <cstdint>
#include <string>

#include "power/power_scheme.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

constexpr Guid kScheme = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
constexpr Guid kSubgroup = {2, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
constexpr Guid kSetting = {3, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

constexpr DWORD kStored = 1800;

DWORD Read(HKEY, const GUID*, const GUID*, const GUID*, DWORD* value) {
  *value = kStored;
  return ERROR_SUCCESS;
}

std::string ValueCall(const char* name, const auto&... value) {
  return SystemCall(name, nullptr, std::bit_cast<GUID>(kScheme), std::bit_cast<GUID>(kSubgroup),
                    std::bit_cast<GUID>(kSetting), value...);
}

}  // namespace

TEST_CASE("the active scheme is copied, and the system's memory freed") {
  GUID memory = std::bit_cast<GUID>(kScheme);
  const ImportStub<"PowerGetActiveScheme", decltype(PowerGetActiveScheme)> get{
      [&](HKEY, GUID** active) -> DWORD {
        *active = &memory;
        return ERROR_SUCCESS;
      }};
  HLOCAL freed = nullptr;
  const ImportStub<"LocalFree", decltype(LocalFree)> release{[&](HLOCAL local) -> HLOCAL {
    freed = local;
    return nullptr;
  }};
  Guid scheme = {};
  CHECK(GetActivePowerScheme(scheme));
  CHECK(scheme == kScheme);
  CHECK(freed == &memory);
  CHECK(TakeSystemCalls() == Calls{SystemCall("PowerGetActiveScheme", nullptr, kMemory),
                                   SystemCall("LocalFree", kMemory)});
}

TEST_CASE("an active scheme that the system does not tell leaves the output alone") {
  const ImportStub<"PowerGetActiveScheme", decltype(PowerGetActiveScheme)> get{
      DWORD{ERROR_CALL_NOT_IMPLEMENTED}};
  Guid scheme = kSetting;
  CHECK_FALSE(GetActivePowerScheme(scheme));
  CHECK(scheme == kSetting);
  TakeSystemCalls();
}

TEST_CASE("a scheme is made the active one by its identifier") {
  for (const DWORD status : {DWORD{ERROR_SUCCESS}, DWORD{ERROR_ACCESS_DENIED}}) {
    const ImportStub<"PowerSetActiveScheme", decltype(PowerSetActiveScheme)> set{status};
    CHECK(SetActivePowerScheme(kScheme) == (status == ERROR_SUCCESS));
    CHECK(TakeSystemCalls() ==
          Calls{SystemCall("PowerSetActiveScheme", nullptr, std::bit_cast<GUID>(kScheme))});
  }
}

TEST_CASE("a scheme's value is read and written for the source that is meant") {
  const ImportStub<"PowerReadACValueIndex", decltype(PowerReadACValueIndex)> readAC{Read};
  const ImportStub<"PowerReadDCValueIndex", decltype(PowerReadDCValueIndex)> readDC{Read};
  const ImportStub<"PowerWriteACValueIndex", decltype(PowerWriteACValueIndex)> writeAC{};
  const ImportStub<"PowerWriteDCValueIndex", decltype(PowerWriteDCValueIndex)> writeDC{};
  struct Row {
    uint32_t source;
    const char* read;
    const char* write;
  };
  for (const Row& row : {Row{kPowerSourceAC, "PowerReadACValueIndex", "PowerWriteACValueIndex"},
                         {kPowerSourceDC, "PowerReadDCValueIndex", "PowerWriteDCValueIndex"}}) {
    uint32_t value = 9;
    CHECK(ReadSchemeValue(row.source, kScheme, kSubgroup, kSetting, value));
    CHECK(value == kStored);
    CHECK(TakeSystemCalls() == Calls{ValueCall(row.read, kMemory)});
    CHECK(WriteSchemeValue(row.source, kScheme, kSubgroup, kSetting, 60));
    CHECK(TakeSystemCalls() == Calls{ValueCall(row.write, 60)});
  }
}

TEST_CASE("a scheme's value that the system refuses answers false and leaves the output alone") {
  const DWORD refused = ERROR_ACCESS_DENIED;
  const ImportStub<"PowerReadACValueIndex", decltype(PowerReadACValueIndex)> readAC{refused};
  const ImportStub<"PowerReadDCValueIndex", decltype(PowerReadDCValueIndex)> readDC{refused};
  const ImportStub<"PowerWriteACValueIndex", decltype(PowerWriteACValueIndex)> writeAC{refused};
  const ImportStub<"PowerWriteDCValueIndex", decltype(PowerWriteDCValueIndex)> writeDC{refused};
  for (const uint32_t source : {kPowerSourceAC, kPowerSourceDC}) {
    uint32_t value = 9;
    CHECK_FALSE(ReadSchemeValue(source, kScheme, kSubgroup, kSetting, value));
    CHECK(value == 9);
    CHECK_FALSE(WriteSchemeValue(source, kScheme, kSubgroup, kSetting, 60));
  }
  TakeSystemCalls();
}

}  // namespace dozewell
