#include <doctest/doctest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "power/power_scheme.h"
#include "power/wake_timer_policy.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

TEST_CASE("a policy on wake timers is read for each power source, and none is none") {
  LSTATUS status = ERROR_SUCCESS;
  std::wstring asked;
  const ImportStub<"RegGetValueW",
                   LSTATUS(HKEY, const wchar_t*, const wchar_t*, DWORD, DWORD*, void*, DWORD*)>
      read{[&](HKEY root, const wchar_t* key, const wchar_t* name, DWORD types, DWORD*, void* data,
               DWORD* size) {
        CHECK(root == HKEY_LOCAL_MACHINE);
        CHECK(types == RRF_RT_REG_DWORD);
        CHECK(*size == 4);
        asked = std::wstring(key) + L" " + name;
        const DWORD two = 2;
        std::memcpy(data, &two, sizeof(two));
        return status;
      }};
  const std::wstring key =
      L"SOFTWARE\\Policies\\Microsoft\\Power\\PowerSettings\\BD3B718A-0680-4D9D-8AB2-E1D2B4AC806D ";
  CHECK(ReadWakeTimerPolicy(kPowerSourceAC) == 2);
  CHECK(asked == key + L"ACSettingIndex");
  CHECK(ReadWakeTimerPolicy(kPowerSourceDC) == 2);
  CHECK(asked == key + L"DCSettingIndex");
  status = ERROR_FILE_NOT_FOUND;
  CHECK_FALSE(ReadWakeTimerPolicy(kPowerSourceAC));
  TakeSystemCalls();
}

}  // namespace dozewell
