#ifndef DOZEWELL_COMMON_SIMULATED_PARAMETERS_H_
#define DOZEWELL_COMMON_SIMULATED_PARAMETERS_H_

#include "optimizer/simulator/native_simulator_configurations.h"
#include "prediction/configurations.h"

namespace dozewell {

// The parameters of a configuration as a candidate of the simulator.
NativeSimulatorConfigurations SimulatedParameters(IConfigurations& configuration);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_SIMULATED_PARAMETERS_H_
