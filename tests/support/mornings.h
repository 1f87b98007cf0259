#ifndef DOZEWELL_TESTS_SUPPORT_MORNINGS_H_
#define DOZEWELL_TESTS_SUPPORT_MORNINGS_H_

#include <cstdint>
#include <vector>

#include "fakes/configurations_fake.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/history_file.h"
#include "support/sim_days.h"

namespace dozewell {

// The history of a machine that is in use from 08:05 to 12:05 on each of `days` days.
inline std::vector<HistoryRecord> Mornings(int days) {
  std::vector<HistoryRecord> history;
  for (int day = 0; day < days; ++day) {
    history.push_back(SimRecord(0, day, 8, 5));
    history.push_back(SimRecord(1, day, 12, 5));
  }
  return history;
}

// A configuration for which all days are alike, with slots of 10 minutes.
inline fakes::Configurations AllDaysAlike() {
  fakes::Configurations configuration;
  configuration.values["DayGrouping"] = "255";
  configuration.timeResolution = 10;
  return configuration;
}

// Has the tracker learn a history.
inline void Learn(ITracker& tracker, const std::vector<HistoryRecord>& history) {
  for (const HistoryRecord& record : history) tracker.ProcessEvent(ToTimeLineEvent(record));
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_MORNINGS_H_
