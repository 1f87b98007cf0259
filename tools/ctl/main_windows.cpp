#include "common/program_start.h"
#include "ctl/ctl.h"

extern "C" int wmain(int argc, wchar_t** argv) {
  return dozewell::ctl::RunCtl(dozewell::StartProgram(argc, argv),
                               dozewell::ctl::StandardConsole());
}
