#ifndef DOZEWELL_SETUP_DEADLINE_H_
#define DOZEWELL_SETUP_DEADLINE_H_

#include <cstdint>

namespace dozewell::setup {

// One moment by which all waits of a step have ended.
class Deadline {
 public:
  explicit Deadline(uint32_t milliseconds);

  uint32_t MillisecondsLeft() const;

 private:
  uint64_t end_;
};

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_DEADLINE_H_
