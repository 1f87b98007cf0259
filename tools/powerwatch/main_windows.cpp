#include "common/messages.h"
#include "common/program_start.h"
#include "powerwatch/command_line.h"
#include "powerwatch/install.h"
#include "powerwatch/watch_names.h"
#include "powerwatch/watch_service.h"

extern "C" int wmain(int argc, wchar_t** argv) {
  namespace powerwatch = dozewell::powerwatch;
  return powerwatch::RunPowerwatch(
      dozewell::StartProgram(argc, argv),
      {powerwatch::InstallWatch, powerwatch::RemoveWatch, powerwatch::ServeWatch},
      {dozewell::PrintOutput, [](const std::string& message) {
         dozewell::PrintMessage(powerwatch::kProgramName, message);
       }});
}
