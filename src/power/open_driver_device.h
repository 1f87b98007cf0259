#ifndef DOZEWELL_POWER_OPEN_DRIVER_DEVICE_H_
#define DOZEWELL_POWER_OPEN_DRIVER_DEVICE_H_

namespace dozewell {

// Opens the driver's device. Where there is none and the settings say so, the system's own timer
// takes its place; otherwise the service works without. Nothing is reported. The service main
// thread, once.
void OpenDriverDevice();

}  // namespace dozewell

#endif  // DOZEWELL_POWER_OPEN_DRIVER_DEVICE_H_
