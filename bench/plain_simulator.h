#ifndef DOZEWELL_BENCH_PLAIN_SIMULATOR_H_
#define DOZEWELL_BENCH_PLAIN_SIMULATOR_H_

#include <span>

#include "optimizer/simulator/sim_time_line.h"
#include "prediction/configurations.h"
#include "prediction/history_file.h"

namespace dozewell {

// A simulation with a live predictor read plainly, on the plain tracker: one queue, one switch,
// every slot estimated whenever it is looked at.
SimTimeLine SimulatePlainly(IConfigurations& parameters, std::span<const HistoryRecord> history);

}  // namespace dozewell

#endif  // DOZEWELL_BENCH_PLAIN_SIMULATOR_H_
