#ifndef DOZEWELL_LAB_POWER_CLOCK_H_
#define DOZEWELL_LAB_POWER_CLOCK_H_

namespace dozewell::lab {

// Ends the sleep of every thread that has slept for long enough, after the clock was moved. When it
// returns, the threads count as busy again.
void WakeSleepers();

// Marks the calling thread as one of those that count as busy while they are not asleep.
void CountThreadAsBusy();

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_POWER_CLOCK_H_
