#ifndef DOZEWELL_SETUP_SYSTEM_STEPS_H_
#define DOZEWELL_SETUP_SYSTEM_STEPS_H_

#include <cstdint>

namespace dozewell::setup {

// What an installation asks of the system beyond what an installer package can say. All throw
// std::runtime_error when the system refuses.

// Has the installed service start with the system, but late, and be restarted when its process ends
// unasked: after one minute, five, and from then on fifteen. A day without a failure starts the
// count again.
void ConfigureService();

// Makes the folder of the learnt data one that administrators and the system alone can change and
// every user can read, with the folder that it is in. What is there already and belongs to somebody
// else, or leads elsewhere, is not trusted: it is kept under a name that ends in ".untrusted".
void SecureDataFolder();

// Waits until no process runs a program any more, for so many milliseconds at most for each.
void AwaitEndOf(const wchar_t* program, uint32_t milliseconds);

// The same for the service's program. A service has stopped before its process has ended, and until
// then its file can be neither deleted nor replaced.
void AwaitServiceEnd();

// Deletes what was learnt and the live settings, and the folders and keys that they were in if
// nothing else is there. What does not exist is well.
void RemoveLearntData();

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_SYSTEM_STEPS_H_
