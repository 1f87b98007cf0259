#ifndef DOZEWELL_BENCH_PLAYED_YEAR_H_
#define DOZEWELL_BENCH_PLAYED_YEAR_H_

#include <vector>

#include "prediction/time_line.h"

namespace dozewell {

// A made-up year of a machine that is used with breaks from morning to evening on five days of the
// week, and sometimes on the other two. The same at every call.
std::vector<TimeLineEvent> PlayedYear();

}  // namespace dozewell

#endif  // DOZEWELL_BENCH_PLAYED_YEAR_H_
