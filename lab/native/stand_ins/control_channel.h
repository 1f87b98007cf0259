#ifndef DOZEWELL_LAB_STAND_INS_CONTROL_CHANNEL_H_
#define DOZEWELL_LAB_STAND_INS_CONTROL_CHANNEL_H_

namespace dozewell::lab {

// The service's control handler, as the system calls it.
using ControlHandler = unsigned long (*)(unsigned long control, unsigned long eventType,
                                         void* eventData, void* context);

// From now on the test can deliver controls to the handler, as the system would.
void OpenControlChannel(ControlHandler handler, void* context);

// A console program's handler, as the system calls it.
using ConsoleHandler = int (*)(unsigned long type);

// From now on the test can close the program's console.
void OpenConsoleChannel(ConsoleHandler handler);

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_STAND_INS_CONTROL_CHANNEL_H_
