#ifndef DOZEWELL_REPORT_SET_TEXT_H_
#define DOZEWELL_REPORT_SET_TEXT_H_

#include <string>

#include "optimizer/simulator/parameter_grid.h"

namespace dozewell::report {

// The parameters of a set in sentences. The set must be one that can be simulated.
std::string SetText(const ParameterSet& set);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_SET_TEXT_H_
