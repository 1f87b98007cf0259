#ifndef DOZEWELL_SETUP_SYSTEM_STEPS_H_
#define DOZEWELL_SETUP_SYSTEM_STEPS_H_

#include <cstdint>

namespace dozewell::setup {

// What an installation asks of the system beyond what an installer package can say. All throw
// std::runtime_error when the system refuses.

// Makes the installed service start with the system, but late, and restart when its process ends
// unexpectedly: after one minute, then after five, and from then on after fifteen. A day without a
// failure starts the count again.
void ConfigureService();

// Lets only administrators and the system change the folder of the learnt data, and the folder that
// it is in; every user can read them. An existing folder or file that belongs to somebody else, or
// leads elsewhere, is not trusted: it is kept under a name that ends in ".untrusted".
void SecureDataFolder();

// Waits for each process that runs a program to end, for at most so many milliseconds each.
void AwaitEndOf(const wchar_t* program, uint32_t milliseconds);

// Waits for the service's program. A service counts as stopped before its process has ended, but
// its file can be neither deleted nor replaced until then.
void AwaitServiceEnd();

// Deletes what was learnt and the live settings, and the folders and keys that they were in if
// nothing else is there. It is no error if some of it does not exist.
void RemoveLearntData();

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_SYSTEM_STEPS_H_
