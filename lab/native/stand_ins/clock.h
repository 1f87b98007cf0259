#ifndef DOZEWELL_LAB_STAND_INS_CLOCK_H_
#define DOZEWELL_LAB_STAND_INS_CLOCK_H_

namespace dozewell::lab {

// To be called after the clock was moved: ends the sleep of every thread that has slept long
// enough. When it returns, those threads count as busy again.
void WakeSleepers();

// From now on the calling thread counts as busy whenever it is not asleep.
void CountThreadAsBusy();

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_STAND_INS_CLOCK_H_
