#include <string>
#include <vector>

#include "common/output_file.h"
#include "common/standard_stream.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_identity.h"
#include "ctl/require_new_file.h"
#include "ctl/settings_in_force.h"
#include "ctl/settings_text.h"

namespace dozewell::ctl {

void RunSettingsShow(const Options& options, const Console& console) {
  const std::vector<SettingRead> settings = ReadSettingsInForce();
  console.print(options.json ? LiveLine(SettingsJson(settings)) : SettingsTable(settings));
}

void RunSettingsExport(const Options& options, const Console& console) {
  const std::string name = options.file.value_or(kStandardStream);
  if (IsStandardStream(name) && options.json) {
    throw CommandFailure(
        ExitCode::Usage,
        "--json prints to standard output, so the settings cannot be written there");
  }
  RequireNewFile(name, options, console);
  const MachineIdentity identity = LiveIdentity();
  const std::string text = SettingsFileText(ReadSettingsInForce(), identity);
  if (IsStandardStream(name)) {
    console.print(text);
    return;
  }
  OutputFile(name).Write(text.data(), text.size());
  console.print(options.json ? IdentifiedLine({{"file", name}, {"bytes", text.size()}}, identity)
                             : name + ": " + std::to_string(text.size()) + " bytes\n");
}

}  // namespace dozewell::ctl
