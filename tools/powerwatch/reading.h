#ifndef DOZEWELL_POWERWATCH_READING_H_
#define DOZEWELL_POWERWATCH_READING_H_

#include "powerwatch/watch_line.h"

namespace dozewell::powerwatch {

// What the machine's clocks and counters show now. Any thread.
Reading ReadNow();

}  // namespace dozewell::powerwatch

#endif  // DOZEWELL_POWERWATCH_READING_H_
