#include "controller/state_machine/event_records.h"

#include <utility>

#include "base/clock.h"

namespace dozewell {

SMEventData::SMEventData(SMEvent eventId) : event(eventId), time(kUnsetTime) { LocalTimeNow(time); }

ParamChangeEventData::ParamChangeEventData(std::string&& parameter)
    : SMEventData(SMEvent::ParamChanging), param(std::move(parameter)) {
  // Whatever the string class does with short texts, the caller's is empty afterwards.
  parameter.clear();
}

}  // namespace dozewell
