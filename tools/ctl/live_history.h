#ifndef DOZEWELL_CTL_LIVE_HISTORY_H_
#define DOZEWELL_CTL_LIVE_HISTORY_H_

#include <string>
#include <vector>

#include "ctl/unsaved_learning.h"
#include "prediction/history_file.h"

namespace dozewell::ctl {

// The records that count of the service's history, and those that it has not saved yet. A history
// that cannot be opened, or is damaged, is a warning. Throws ToolError for a file of another kind.
std::vector<HistoryRecord> LiveHistory(const UnsavedLearning& unsaved,
                                       std::vector<std::string>& warnings);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_HISTORY_H_
