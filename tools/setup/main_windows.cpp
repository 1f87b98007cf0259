#include <string>

#include "base/utf8.h"
#include "common/messages.h"
#include "common/program_start.h"
#include "diagnostics/event_log.h"
#include "diagnostics/event_writer.h"
#include "setup/restore.h"
#include "setup/setup.h"
#include "setup/system_steps.h"
#include "setup/undo_notes.h"

namespace {

using dozewell::setup::kProgramName;
using dozewell::setup::Step;

// Steps that have nothing to say.
template <void (*kStep)()>
std::string Take(const std::string&) {
  kStep();
  return "";
}
template <void (*kStep)(const std::string& folder)>
std::string Take(const std::string& folder) {
  kStep(folder);
  return "";
}

constexpr Step kSteps[] = {
    {"secure-install-folder", "FOLDER", Take<dozewell::setup::SecureInstallFolder>},
    {"remove-install-folder", "FOLDER", Take<dozewell::setup::RemoveInstallFolder>},
    {"undo-install-folder", nullptr, Take<dozewell::setup::UndoInstallFolder>},
    {"secure-data-folder", "USERSMAYREAD", dozewell::setup::SecureDataFolder},
    {"undo-data-folder", nullptr, Take<dozewell::setup::UndoDataFolder>},
    {"note-service", nullptr, Take<dozewell::setup::NoteService>},
    {"await-deletion", nullptr, Take<dozewell::setup::AwaitDeletion>},
    {"configure-service", nullptr, Take<dozewell::setup::ConfigureService>},
    {"restore", nullptr, Take<dozewell::setup::RestoreMachine>},
    {"stop-service", nullptr, Take<dozewell::setup::StopService>},
    {"undo-service", nullptr, Take<dozewell::setup::UndoService>},
    {"forget-notes", nullptr, Take<dozewell::setup::ForgetUndoNotes>},
    {"remove-learnt-data", nullptr, Take<dozewell::setup::RemoveLearntData>},
};

// The installer shows no output of its programs, so messages go to the event log too.
void Report(const std::string& message, uint16_t eventType) {
  dozewell::PrintMessage(kProgramName, message);
  const dozewell::EventSource source = dozewell::OpenEventSource(dozewell::kEventSourceName);
  if (source == nullptr) return;
  const std::wstring text = dozewell::WidenUtf8(std::string(kProgramName) + ": " + message);
  dozewell::ReportToEventLog(source, eventType, text.c_str());
  dozewell::CloseEventSource(source);
}

}  // namespace

extern "C" int wmain(int argc, wchar_t** argv) {
  return dozewell::setup::RunSetup(
      dozewell::StartProgram(argc, argv), kSteps,
      {[](const std::string& message) { Report(message, dozewell::kEventError); },
       [](const std::string& message) { Report(message, dozewell::kEventInformation); }});
}
