#ifndef DOZEWELL_CTL_UNSAVED_LEARNING_H_
#define DOZEWELL_CTL_UNSAVED_LEARNING_H_

#include <optional>
#include <string>
#include <vector>

#include "ctl/logged_learning.h"
#include "prediction/history_file.h"

namespace dozewell::ctl {

// What the service that runs has learnt and may not have saved yet.
struct UnsavedLearning {
  std::string why;  // why that is not known; empty when `learning` tells it
  LoggedLearning learning;
};

// Asks the service whether it runs, and reads its settings and its events.
UnsavedLearning ReadUnsavedLearning();

// The records that the service will add to a history whose last record is of this time.
std::vector<HistoryRecord> RecordsAfter(const UnsavedLearning& unsaved,
                                        const std::optional<tm>& last);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_UNSAVED_LEARNING_H_
