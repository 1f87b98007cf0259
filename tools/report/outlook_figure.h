#ifndef DOZEWELL_REPORT_OUTLOOK_FIGURE_H_
#define DOZEWELL_REPORT_OUTLOOK_FIGURE_H_

#include <string>

#include "prediction/arbitrary_cycle_probability_tracker.h"

namespace dozewell::report {

// What is predicted for the days from `now` on: a figure of days, and a list of all idle stretches.
std::string OutlookFigure(ArbitraryCycleProbabilityTracker& tracker, const tm& now);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_OUTLOOK_FIGURE_H_
