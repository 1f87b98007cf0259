#include "service/command_line.h"

int wmain(int argc, wchar_t** argv) { return dozewell::RunCommandLine(argc, argv); }
