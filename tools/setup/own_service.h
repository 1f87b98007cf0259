#ifndef DOZEWELL_SETUP_OWN_SERVICE_H_
#define DOZEWELL_SETUP_OWN_SERVICE_H_

#include "service/service_manager.h"

namespace dozewell::setup {

// The product's service, with every right; null when there is none. Throws SystemError when the
// service control manager refuses.
ServiceHandle OpenOwnService();

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_OWN_SERVICE_H_
