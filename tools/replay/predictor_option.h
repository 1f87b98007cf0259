#ifndef DOZEWELL_REPLAY_PREDICTOR_OPTION_H_
#define DOZEWELL_REPLAY_PREDICTOR_OPTION_H_

#include "replay/command.h"

namespace dozewell::replay {

// Whether the user chose the predictor of rates. Throws ToolError for a predictor that there is
// not, and for --no-wake with another one.
bool IsOfRates(const Options& options);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_PREDICTOR_OPTION_H_
