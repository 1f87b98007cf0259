#include <doctest/doctest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <powrprof.h>

#include <cstring>

#include "power/power_capabilities.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

TEST_CASE("the system's capabilities are passed on as they are, and left alone when it fails") {
  LONG status = 0;
  const ImportStub<"CallNtPowerInformation", decltype(CallNtPowerInformation)> call{
      [&](POWER_INFORMATION_LEVEL level, void* input, ULONG inputSize, void* output, ULONG size) {
        CHECK(level == SystemPowerCapabilities);
        CHECK(input == nullptr);
        CHECK(inputSize == 0);
        CHECK(size == 76);
        std::memset(output, 0, size);
        static_cast<BYTE*>(output)[20] = 1;
        return status;
      }};
  PowerCapabilities capabilities;
  CHECK(ReadPowerCapabilities(capabilities));
  CHECK(capabilities.HasModernStandby());
  CHECK_FALSE(capabilities.HasS3());
  status = -1;
  capabilities = {};
  CHECK_FALSE(ReadPowerCapabilities(capabilities));
  CHECK_FALSE(capabilities.HasModernStandby());
  TakeSystemCalls();
}

}  // namespace dozewell
