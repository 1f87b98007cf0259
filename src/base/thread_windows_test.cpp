#include <doctest/doctest.h>
#include <windows.h>

#include <bit>
#include <cstdint>

#include "base/thread.h"
#include "support/calls.h"
#include "support/system_calls_windows.h"

namespace dozewell {

using namespace support;

namespace {

const auto kThread = std::bit_cast<HANDLE>(uint64_t{0xA00});

void DoNothing() {}

}  // namespace

TEST_CASE("a thread gets the default stack and runs at once, and nobody's handle is closed") {
  HANDLE thread = kThread;
  const ImportStub<"CreateThread", decltype(CreateThread)> create{
      [&](SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*) {
        return thread;
      }};
  const ImportStub<"CloseHandle", decltype(CloseHandle)> close{TRUE};
  const std::string created =
      SystemCall("CreateThread", nullptr, 0, kFunction, kMemory, 0, nullptr);
  const std::string closed = SystemCall("CloseHandle", kThread);
  CHECK(StartWatchedThread(DoNothing) == kThread);
  CHECK(TakeSystemCalls() == Calls{created});
  CHECK(StartThread(DoNothing));
  CHECK(TakeSystemCalls() == Calls{created, closed});
  thread = nullptr;
  CHECK_FALSE(StartThread(DoNothing));
  CHECK(TakeSystemCalls() == Calls{created});
}

TEST_CASE("a thread that was started runs its procedure to the end and is seen to run until then") {
  static HANDLE mayEnd;
  mayEnd = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const ThreadHandle thread = StartWatchedThread([] { WaitForSingleObject(mayEnd, INFINITE); });
  REQUIRE(thread != nullptr);
  CHECK(IsThreadRunning(thread));
  SetEvent(mayEnd);
  CHECK(WaitForSingleObject(thread, INFINITE) == WAIT_OBJECT_0);
  CHECK_FALSE(IsThreadRunning(thread));
  CHECK_FALSE(IsThreadRunning(kNoThread));
  CloseThread(thread);
  CloseHandle(mayEnd);
}

TEST_CASE("background priority is below normal, and normal again afterwards") {
  {
    const BackgroundPriority background;
    CHECK(GetThreadPriority(GetCurrentThread()) == THREAD_PRIORITY_BELOW_NORMAL);
  }
  CHECK(GetThreadPriority(GetCurrentThread()) == THREAD_PRIORITY_NORMAL);
}

TEST_CASE("a sleep takes the milliseconds it is given") {
  const ImportStub<"Sleep", decltype(Sleep)> sleep;
  SleepMilliseconds(1234);
  CHECK(TakeSystemCalls() == Calls{SystemCall("Sleep", 1234)});
}

}  // namespace dozewell
