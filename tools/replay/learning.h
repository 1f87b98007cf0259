#ifndef DOZEWELL_REPLAY_LEARNING_H_
#define DOZEWELL_REPLAY_LEARNING_H_

#include <cstddef>
#include <string>
#include <vector>

#include "prediction/configurations.h"
#include "prediction/historian.h"
#include "replay/history_io.h"
#include "replay/output_file.h"

namespace dozewell {

// The service's predictor, which has learnt a history, in a data file that is not in place yet.
class Learning {
 public:
  // Learns into what is to become the file `data`. Each event that the predictor refuses is a
  // warning. Throws ReplayError, and what the predictor throws.
  Learning(const History& history, IConfigurations& configuration, const std::string& data,
           std::vector<std::string>& warnings);

  // Puts the file in place. Throws ReplayError.
  void Commit() { data_.Commit(size_); }

  // Of the history:
  size_t Records() const { return records_; }
  size_t InOrder() const { return inOrder_; }
  size_t Refused() const { return refused_; }

 private:
  void Feed(const History& history, HistorianImpl& historian, std::vector<std::string>& warnings);

  OutputFile data_;
  size_t size_ = 0;
  size_t records_ = 0;
  size_t inOrder_ = 0;
  size_t refused_ = 0;
};

}  // namespace dozewell

#endif  // DOZEWELL_REPLAY_LEARNING_H_
