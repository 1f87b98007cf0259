#include <windows.h>

#include "setup/deadline.h"

namespace dozewell::setup {

Deadline::Deadline(uint32_t milliseconds) : end_(GetTickCount64() + milliseconds) {}

uint32_t Deadline::MillisecondsLeft() const {
  const ULONGLONG now = GetTickCount64();
  return now < end_ ? static_cast<uint32_t>(end_ - now) : 0;
}

}  // namespace dozewell::setup
