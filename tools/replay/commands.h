#ifndef DOZEWELL_REPLAY_COMMANDS_H_
#define DOZEWELL_REPLAY_COMMANDS_H_

#include "replay/command.h"

namespace dozewell::replay {

// What the commands do; Commands() says which options each has. All throw ToolError, and what the
// engine throws.

void RunLearn(const Options& options, Results& results);
void RunPredict(const Options& options, Results& results);
void RunProbabilities(const Options& options, Results& results);
void RunSuspend(const Options& options, Results& results);
void RunExplain(const Options& options, Results& results);
void RunWeek(const Options& options, Results& results);
void RunReport(const Options& options, Results& results);
void RunMerge(const Options& options, Results& results);
void RunImport(const Options& options, Results& results);
void RunExport(const Options& options, Results& results);
void RunCompare(const Options& options, Results& results);
void RunFleet(const Options& options, Results& results);
void RunSample(const Options& options, Results& results);
void RunSimulate(const Options& options, Results& results);
void RunBaseline(const Options& options, Results& results);
void RunSearch(const Options& options, Results& results);
void RunApply(const Options& options, Results& results);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_COMMANDS_H_
