#ifndef DOZEWELL_POWERWATCH_SERVICE_STATE_H_
#define DOZEWELL_POWERWATCH_SERVICE_STATE_H_

#include <cstdint>

namespace dozewell::powerwatch {

// The state in which a control leaves the watch, as the service control manager numbers states.
uint32_t StateAfter(uint32_t control, uint32_t state);

}  // namespace dozewell::powerwatch

#endif  // DOZEWELL_POWERWATCH_SERVICE_STATE_H_
