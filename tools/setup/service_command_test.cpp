#include "setup/service_command.h"

#include <doctest/doctest.h>

namespace dozewell::setup {

TEST_CASE("the program of a service's command line is what stands in quotation marks, or all") {
  CHECK(ProgramOf(L"\"C:\\a b\\x.exe\"") == L"C:\\a b\\x.exe");
  CHECK(ProgramOf(L"\"C:\\a b\\x.exe\" -local \"y\"") == L"C:\\a b\\x.exe");
  CHECK(ProgramOf(L"C:\\a b\\x.exe") == L"C:\\a b\\x.exe");
  CHECK(ProgramOf(L"\"C:\\a b\\x.exe") == L"C:\\a b\\x.exe");
  CHECK(ProgramOf(L"\"") == L"");
  CHECK(ProgramOf(L"") == L"");
}

}  // namespace dozewell::setup
