#ifndef DOZEWELL_OPTIMIZER_RUN_OPTIMIZER_H_
#define DOZEWELL_OPTIMIZER_RUN_OPTIMIZER_H_

#include <string>

namespace dozewell {

// One search over the recorded history with the ranges in the settings: stores the best set for
// each scoring weight and posts ParamChanging, so that the controller applies the chosen one. A
// stop request ends it with nothing stored or posted, and is over then. What a simulation throws
// goes to the caller, and then nothing is stored, logged or cleared. On the optimizer's thread,
// without locks; takes EngineLock while it reads the file, and ControllerLock when it posts.
void RunOptimizer(const std::wstring& historyPath);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_RUN_OPTIMIZER_H_
