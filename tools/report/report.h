#ifndef DOZEWELL_REPORT_REPORT_H_
#define DOZEWELL_REPORT_REPORT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/machine_identity.h"
#include "common/rates_explanation.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/configurations.h"
#include "prediction/history_file.h"
#include "walk/search_calendar.h"

namespace dozewell::report {

struct ReportInput {
  IConfigurations& configuration;
  ArbitraryCycleProbabilityTracker& tracker;  // on what was learnt
  std::vector<HistoryRecord> history;         // the records that count
  tm now;                                     // a valid local time
  int64_t hibernateAfterSeconds;              // the timeout to compare with; 0 is never
  SearchHabits habits;                        // when the service searches
  std::vector<std::string> notes;             // what the reader has to know first
  MachineIdentity identity = {};              // whose data and settings these are
  // Why rates decide as they do, where they are the predictor.
  std::optional<RatesExplanation> rates = std::nullopt;
};

// A page of HTML that stands alone: it loads nothing and runs no script. The same input makes the
// same page. When the history cannot be replayed, the page says why in place of the sections that
// need it.
std::string MakeReport(const ReportInput& input);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_REPORT_H_
