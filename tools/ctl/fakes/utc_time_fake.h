#ifndef DOZEWELL_CTL_FAKES_UTC_TIME_FAKE_H_
#define DOZEWELL_CTL_FAKES_UTC_TIME_FAKE_H_

#include <cstdint>

namespace dozewell::fakes {

// How far this machine's local time is ahead of UTC.
extern int32_t utcOffsetSeconds;

}  // namespace dozewell::fakes

#endif  // DOZEWELL_CTL_FAKES_UTC_TIME_FAKE_H_
