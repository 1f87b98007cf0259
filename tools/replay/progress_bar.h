#ifndef DOZEWELL_REPLAY_PROGRESS_BAR_H_
#define DOZEWELL_REPLAY_PROGRESS_BAR_H_

#include <cstdint>

namespace dozewell::replay {

// Shows on standard error, a terminal, how far a task has come, and erases itself at the end.
class ProgressBar {
 public:
  // One that is not `shown` prints nothing.
  ProgressBar(uint64_t steps, bool shown);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void Step();

 private:
  void Draw() const;

  uint64_t steps_;
  bool shown_;
  uint64_t done_ = 0;
  uint64_t percent_ = 0;
};

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_PROGRESS_BAR_H_
