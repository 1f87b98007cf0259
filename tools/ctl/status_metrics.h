#ifndef DOZEWELL_CTL_STATUS_METRICS_H_
#define DOZEWELL_CTL_STATUS_METRICS_H_

#include <string>

#include "ctl/status_report.h"

namespace dozewell::ctl {

// The report in the text format that collectors of metrics read from files. What is not known has
// no line.
std::string StatusMetrics(const StatusReport& report);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_STATUS_METRICS_H_
