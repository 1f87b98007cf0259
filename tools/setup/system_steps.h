#ifndef DOZEWELL_SETUP_SYSTEM_STEPS_H_
#define DOZEWELL_SETUP_SYSTEM_STEPS_H_

#include <cstdint>
#include <string>

namespace dozewell::setup {

// What an installation asks of the system beyond what an installer package can say. All throw
// std::runtime_error when the system refuses.

// Puts the path of the installed service's program into quotation marks, lets nobody but
// administrators and the system send it controls of their own making, makes it start with the
// system, but late, and restart when its process ends unexpectedly: after one minute, then after
// five, and from then on after fifteen. A day without a failure starts the count again.
void ConfigureService();

// Lets only administrators and the system change the folder of the learnt data, and the folder that
// it is in. An existing folder or file that belongs to somebody else, or leads elsewhere, is not
// trusted: it is kept under a name that ends in ".untrusted". "1": users can read the folder, "0":
// they cannot, "": as before, and they can if the folder is new. Returns what an administrator
// should know of rights that were kept; empty for nothing.
std::string SecureDataFolder(const std::string& usersMayRead);

// Makes the folder for the programs, and those around it that are missing, so that only
// administrators and the system can change what is in it. An existing folder is left as it is;
// throws when others may change something in it, or put another folder in its place.
void SecureInstallFolder(const std::string& folder);

// Deletes that folder and the one around it, each only if it is empty.
void RemoveInstallFolder(const std::string& folder);

// Stops the service and waits until its process has ended, for at most so many milliseconds. A
// service counts as stopped before its process has ended, but its file can be neither deleted nor
// replaced until then. Without a process of the service, those that run its program are waited for.
void StopService(uint32_t milliseconds);
void StopService();  // with the time that an installation has

// Waits while the service is being deleted, for at most so many milliseconds: it is there until
// every program that looks at it has closed its handle, and no other can be made before.
void AwaitDeletion(uint32_t milliseconds);
void AwaitDeletion();  // with the time that an installation has

// What the steps above change is noted, and undone by these when the installation fails.

// Forgets all notes, and notes what is set for the service, if there is one, and whether it runs.
void NoteService();
// Sets that again for the service, which the installer may have deleted and made anew meanwhile,
// starts it if it ran, and forgets all notes.
void UndoService();
// Take folders away that were made, give back rights and put back what was moved aside. A folder
// that something is in stays.
void UndoDataFolder();
void UndoInstallFolder();

// Deletes what was learnt and the live settings, and the folders and keys that they were in if
// nothing else is there. It is no error if some of it does not exist.
void RemoveLearntData();

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_SYSTEM_STEPS_H_
