#include <doctest/doctest.h>
#include <windows.h>

#include <cstring>

#include "power/last_sleep.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

constexpr ULONGLONG kFellAsleep = 0x1'2345'6789'ABCD;
constexpr ULONGLONG kWoke = 0x1'2345'7789'ABCD;

LONG AnswerWith(ULONGLONG ticks, void* output, ULONG size) {
  CHECK(size == sizeof(ticks));
  std::memcpy(output, &ticks, sizeof(ticks));
  return 0;
}

}  // namespace

TEST_CASE("the last sleep and wake come from the system, in milliseconds") {
  for (const int failing : {0, int{LastSleepTime}, int{LastWakeTime}}) {
    const ImportStub<"CallNtPowerInformation",
                     LONG(POWER_INFORMATION_LEVEL, void*, ULONG, void*, ULONG)>
        call{[&](POWER_INFORMATION_LEVEL level, void* input, ULONG inputSize, void* output,
                 ULONG size) {
          CHECK(input == nullptr);
          CHECK(inputSize == 0);
          if (level == failing) return LONG{-1};
          return AnswerWith(level == LastSleepTime ? kFellAsleep : kWoke, output, size);
        }};
    const ULONGLONG before = GetTickCount64();
    const auto sleep = ReadLastSleep();
    CHECK(sleep.has_value() == (failing == 0));
    if (!sleep) continue;
    CHECK(sleep->fellAsleep == kFellAsleep / 10'000);
    CHECK(sleep->woke == kWoke / 10'000);
    CHECK(sleep->now >= before);
    CHECK(sleep->now <= GetTickCount64());
  }
  TakeSystemCalls();
}

}  // namespace dozewell
