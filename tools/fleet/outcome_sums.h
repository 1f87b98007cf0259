#ifndef DOZEWELL_FLEET_OUTCOME_SUMS_H_
#define DOZEWELL_FLEET_OUTCOME_SUMS_H_

#include <cstdint>

#include "optimizer/simulator/sim_time_line.h"

namespace dozewell::fleet {

// The outcomes of many machines. Sums of whole numbers, so their order does not matter.
struct OutcomeSums {
  int64_t sleepSeconds = 0;
  int64_t hibernateSeconds = 0;
  int64_t resumesFromSleep = 0;
  int64_t resumesFromHibernate = 0;

  void Add(const Outcomes& outcomes) {
    sleepSeconds += outcomes.sleepSeconds;
    hibernateSeconds += outcomes.hibernateSeconds;
    resumesFromSleep += outcomes.resumesFromSleep;
    resumesFromHibernate += outcomes.resumesFromHibernate;
  }

  bool operator==(const OutcomeSums&) const = default;
};

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_OUTCOME_SUMS_H_
