#ifndef DOZEWELL_BENCH_PLAIN_SIMULATOR_H_
#define DOZEWELL_BENCH_PLAIN_SIMULATOR_H_

#include <span>

#include "optimizer/simulator/sim_time_line.h"
#include "prediction/configurations.h"
#include "prediction/history_file.h"

namespace dozewell {

// A plain reading of the simulation with a live predictor, on the plain tracker: one queue, one
// switch, and every slot is estimated each time that it is looked at.
SimTimeLine SimulatePlainly(IConfigurations& parameters, std::span<const HistoryRecord> history);

}  // namespace dozewell

#endif  // DOZEWELL_BENCH_PLAIN_SIMULATOR_H_
