#ifndef DOZEWELL_SERVICE_INSTALL_H_
#define DOZEWELL_SERVICE_INSTALL_H_

namespace dozewell {

// Both report to the event log what they did and what failed.

// Creates the service from this program and starts it. One that exists already stays as it is.
void InstallService();

// Asks the service to stop and deletes it, whether or not it stops.
void UninstallService();

}  // namespace dozewell

#endif  // DOZEWELL_SERVICE_INSTALL_H_
