#ifndef DOZEWELL_CONTROLLER_STATE_MACHINE_EVENT_RECORDS_H_
#define DOZEWELL_CONTROLLER_STATE_MACHINE_EVENT_RECORDS_H_

#include <cstdint>
#include <string>

#include "base/wall_clock.h"

namespace dozewell {

// The events of the sleep controller.
enum class SMEvent : uint32_t {
  Activating = 0,
  Suspend = 1,
  ShuttingDown = 2,
  ParamChanging = 3,
  Uninitializing = 4,
  Saving = 5,
  ResetHistory = 6,
};

// An event and the local time at which it was made; kUnsetTime when the clock could not be read.
// The poster makes it, on any thread, and PostEvent takes ownership.
struct SMEventData {
  explicit SMEventData(SMEvent eventId);
  virtual ~SMEventData() = default;
  SMEventData(const SMEventData&) = delete;
  SMEventData& operator=(const SMEventData&) = delete;

  SMEvent event;
  tm time;
};

// ParamChanging, with the name of the parameter that changed, such as kStrengthName.
struct ParamChangeEventData : SMEventData {
  explicit ParamChangeEventData(std::string&& parameter);

  std::string param;
};

}  // namespace dozewell

#endif  // DOZEWELL_CONTROLLER_STATE_MACHINE_EVENT_RECORDS_H_
