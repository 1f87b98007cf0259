#include "fleet/machine_row.h"

#include <doctest/doctest.h>

namespace dozewell::fleet {

TEST_CASE("A machine is called by the folder of its history") {
  CHECK(MachineName("machines/PC-1/zs7state.dat") == "PC-1");
  CHECK(MachineName(R"(\\PC-2\C$\ProgramData\Brevan\Z7\ZS7STATE.DAT)") == "PC-2");
  CHECK(MachineName(R"(C:\copies\PC-3\Brevan\Z7\zs7state.dat)") == "PC-3");
  CHECK(MachineName("machines/PC-4/brevan/z7/zs7state.dat") == "PC-4");
}

TEST_CASE("A machine whose history has a name of its own is called by that") {
  CHECK(MachineName("machines/all/PC-5.csv") == "PC-5");
  CHECK(MachineName("PC-6.site.dat") == "PC-6.site");
}

TEST_CASE("A machine is called something whatever its path") {
  CHECK(MachineName("zs7state.dat") == "zs7state");
  CHECK(MachineName("/Z7/zs7state.dat") == "zs7state");
  CHECK(MachineName("") == "");
}

}  // namespace dozewell::fleet
