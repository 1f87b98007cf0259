#ifndef DOZEWELL_OPTIMIZER_RUN_OPTIMIZER_H_
#define DOZEWELL_OPTIMIZER_RUN_OPTIMIZER_H_

#include <string>

namespace dozewell {

// Searches the recorded history with the ranges in the settings, stores the best set for each
// scoring weight, and posts ParamChanging, so that the controller applies the chosen one. A stop
// request ends the search with nothing stored or posted, and is cleared. Exceptions of a simulation
// go to the caller; then nothing is stored, logged or cleared. Called on the optimizer's thread
// without locks; takes EngineLock while it reads the file, and ControllerLock when it posts.
void RunOptimizer(const std::wstring& historyPath);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_RUN_OPTIMIZER_H_
