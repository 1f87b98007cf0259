#ifndef DOZEWELL_CONTROLLER_GUARDS_H_
#define DOZEWELL_CONTROLLER_GUARDS_H_

#include "base/event_records.h"

namespace dozewell {

// What kind of wake a resume is. Each asks driver and power scheme afresh and looks at no event.
// Under ControllerLock.

// Did the expired hardware timer wake the machine out of hibernation?
bool GImpl_GoingToS3(const SMEventData* event);

// Is it the system's own wake, on its way from sleep into hibernation?
bool GImpl_GoingToS4(const SMEventData* event);

// Is it neither of the two?
bool GImpl_RealActivate(const SMEventData* event);

}  // namespace dozewell

#endif  // DOZEWELL_CONTROLLER_GUARDS_H_
