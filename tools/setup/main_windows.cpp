#include <string>

#include "base/utf8.h"
#include "common/messages.h"
#include "common/program_start.h"
#include "diagnostics/event_log.h"
#include "diagnostics/event_writer.h"
#include "setup/restore.h"
#include "setup/setup.h"
#include "setup/system_steps.h"

namespace {

using dozewell::setup::kProgramName;
using dozewell::setup::Step;

constexpr Step kSteps[] = {
    {"secure-data-folder", dozewell::setup::SecureDataFolder},
    {"configure-service", dozewell::setup::ConfigureService},
    {"restore", dozewell::setup::RestoreMachine},
    {"await-end", dozewell::setup::AwaitServiceEnd},
    {"remove-learnt-data", dozewell::setup::RemoveLearntData},
};

// The installer shows no output of its programs, so messages go to the event log too.
void Report(const std::string& message) {
  dozewell::PrintMessage(kProgramName, message);
  const dozewell::EventSource source = dozewell::OpenEventSource(dozewell::kEventSourceName);
  if (source == nullptr) return;
  const std::wstring text = dozewell::WidenUtf8(std::string(kProgramName) + ": " + message);
  dozewell::ReportToEventLog(source, dozewell::kEventError, text.c_str());
  dozewell::CloseEventSource(source);
}

}  // namespace

extern "C" int wmain(int argc, wchar_t** argv) {
  return dozewell::setup::RunSetup(dozewell::StartProgram(argc, argv), kSteps, Report);
}
