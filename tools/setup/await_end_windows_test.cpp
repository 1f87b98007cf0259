#include <doctest/doctest.h>
#include <windows.h>

#include "setup/system_steps.h"

namespace dozewell::setup {

TEST_CASE("the end of a program that does not run is not waited for") {
  CHECK_NOTHROW(AwaitEndOf(L"no such program.exe", INFINITE));
}

TEST_CASE("a program that still runs is reported") {
  wchar_t path[MAX_PATH];
  REQUIRE(GetModuleFileNameW(nullptr, path, MAX_PATH) != 0);
  CHECK_THROWS_WITH(AwaitEndOf(wcsrchr(path, L'\\') + 1, 1),
                    "leaf_tests.exe still runs (error 258)");
}

TEST_CASE("a program that runs is waited for, whatever the case of its name") {
  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION started = {};
  wchar_t command[] = L"net.exe help";
  REQUIRE(CreateProcessW(nullptr, command, nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                         nullptr, &startup, &started) != 0);
  CHECK_NOTHROW(AwaitEndOf(L"NET.exe", 20000));
  CHECK(WaitForSingleObject(started.hProcess, 0) == WAIT_OBJECT_0);
  CloseHandle(started.hThread);
  CloseHandle(started.hProcess);
}

}  // namespace dozewell::setup
