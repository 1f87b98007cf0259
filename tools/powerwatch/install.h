#ifndef DOZEWELL_POWERWATCH_INSTALL_H_
#define DOZEWELL_POWERWATCH_INSTALL_H_

#include <string>

namespace dozewell::powerwatch {

// Both return what there is to say to the user, and throw std::runtime_error.

// Makes the watch's folder, and a service that runs there under the account LocalService without a
// privilege, from now on and from each start of the system on. Leaves nothing behind when it fails.
std::string InstallWatch();

// Stops the service, and deletes service and folder.
std::string RemoveWatch();

}  // namespace dozewell::powerwatch

#endif  // DOZEWELL_POWERWATCH_INSTALL_H_
