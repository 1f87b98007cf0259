#ifndef DOZEWELL_SERVICE_SERVICE_MAIN_H_
#define DOZEWELL_SERVICE_SERVICE_MAIN_H_

namespace dozewell {

// Set, before ServiceMain is called, when the service runs in a console and not under the service
// control manager.
inline bool ConsoleMode = false;

// Brings the service up, waits in the RPC server until the service is stopped, and takes it down.
// Every failure is reported, and the next step follows; only a control handler that cannot be
// registered ends it at once.
void ServiceMain();

}  // namespace dozewell

#endif  // DOZEWELL_SERVICE_SERVICE_MAIN_H_
