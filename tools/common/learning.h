#ifndef DOZEWELL_COMMON_LEARNING_H_
#define DOZEWELL_COMMON_LEARNING_H_

#include <cstddef>
#include <string>
#include <vector>

#include "common/history_io.h"
#include "common/output_file.h"
#include "prediction/configurations.h"
#include "prediction/historian.h"

namespace dozewell {

// Learns a history with the service's predictor, into a data file that takes its name on Commit.
class Learning {
 public:
  // Learns the history for the file `data`. Events that the predictor refuses become warnings.
  // Throws ToolError, and what the predictor throws.
  Learning(const History& history, IConfigurations& configuration, const std::string& data,
           std::vector<std::string>& warnings);

  // Puts the file in place. Throws ToolError.
  void Commit() { data_.Commit(); }

  // Of the history:
  size_t Records() const { return records_; }
  size_t InOrder() const { return inOrder_; }
  size_t Refused() const { return refused_; }

 private:
  void Feed(const History& history, HistorianImpl& historian, std::vector<std::string>& warnings);

  OutputFile data_;
  size_t records_ = 0;
  size_t inOrder_ = 0;
  size_t refused_ = 0;
};

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_LEARNING_H_
