#ifndef DOZEWELL_CONTROLLER_GUARDS_H_
#define DOZEWELL_CONTROLLER_GUARDS_H_

#include "controller/state_machine/event_records.h"

namespace dozewell {

// The guards tell what kind of wake a resume is. Each asks the driver and the power scheme afresh,
// and none looks at the event. Under ControllerLock.

// Did the expired hardware timer wake the machine out of hibernation?
bool GImpl_GoingToS3(const SMEventData* event);

// Is it the system's own wake, on its way from sleep into hibernation?
bool GImpl_GoingToS4(const SMEventData* event);

// Is it neither of the two?
bool GImpl_RealActivate(const SMEventData* event);

}  // namespace dozewell

#endif  // DOZEWELL_CONTROLLER_GUARDS_H_
