#ifndef DOZEWELL_CTL_COMMANDS_H_
#define DOZEWELL_CTL_COMMANDS_H_

#include "ctl/command.h"

namespace dozewell::ctl {

// What the commands do; Commands() says which arguments each has. All throw CommandFailure, and
// what the engine throws.

void RunStatus(const Options& options, const Console& console);
void RunCheck(const Options& options, const Console& console);
void RunPing(const Options& options, const Console& console);
void RunEnable(const Options& options, const Console& console);
void RunDisable(const Options& options, const Console& console);
void RunDriver(const Options& options, const Console& console);
void RunWakeGet(const Options& options, const Console& console);
void RunWakeSet(const Options& options, const Console& console);
void RunWakeRaw(const Options& options, const Console& console);
void RunPowerGet(const Options& options, const Console& console);
void RunPowerSet(const Options& options, const Console& console);
void RunSchemeGet(const Options& options, const Console& console);
void RunSchemeSet(const Options& options, const Console& console);
void RunStrengthGet(const Options& options, const Console& console);
void RunStrengthSet(const Options& options, const Console& console);
void RunResetHistory(const Options& options, const Console& console);
void RunExplain(const Options& options, const Console& console);
void RunReport(const Options& options, const Console& console);
void RunImportHistory(const Options& options, const Console& console);
void RunSettingsShow(const Options& options, const Console& console);
void RunSettingsExport(const Options& options, const Console& console);
void RunExport(const Options& options, const Console& console);
void RunWatch(const Options& options, const Console& console);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_COMMANDS_H_
