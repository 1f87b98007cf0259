#include "ctl/check/program_path.h"

#include <doctest/doctest.h>

namespace dozewell::ctl {

TEST_CASE("the program of a command is what stands in quotation marks, or ends in .exe") {
  CHECK(ProgramOf("\"C:\\a b\\c.exe\" -x") == "C:\\a b\\c.exe");
  CHECK(ProgramOf("\"C:\\a b\\c.exe") == "C:\\a b\\c.exe");
  CHECK(ProgramOf("C:\\a b\\c.EXE -x") == "C:\\a b\\c.EXE");
  CHECK(ProgramOf("C:\\a.exe.d\\c.exe") == "C:\\a.exe.d\\c.exe");
  CHECK(ProgramOf("C:\\c") == "C:\\c");
  CHECK(ProgramOf("") == "");
}

TEST_CASE("a command is ambiguous when its program has a blank and no quotation marks") {
  CHECK(IsAmbiguous("C:\\a b\\c.exe"));
  CHECK_FALSE(IsAmbiguous("\"C:\\a b\\c.exe\""));
  CHECK_FALSE(IsAmbiguous("C:\\ab\\c.exe -x"));
}

}  // namespace dozewell::ctl
