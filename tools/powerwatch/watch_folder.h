#ifndef DOZEWELL_POWERWATCH_WATCH_FOLDER_H_
#define DOZEWELL_POWERWATCH_WATCH_FOLDER_H_

#include "powerwatch/watch_names.h"

namespace dozewell::powerwatch {

// The places on this machine. Throws setup::SystemError.
WatchPlaces FindPlaces();

// Makes the folder with a copy of this program and an empty file in it. Administrators and the
// system have all rights to them; the watch's account may read the folder and run the program, and
// only append to the file. Refuses a folder that exists, whoever made it. Throws
// std::runtime_error, and leaves nothing behind then.
void MakeFolder(const WatchPlaces& places);

// Deletes what MakeFolder made, and nothing else; it is no error if there is none. Waits up to ten
// seconds for a process of the program to end. Refuses a folder that others may change. Throws
// std::runtime_error.
void DeleteFolder(const WatchPlaces& places);

}  // namespace dozewell::powerwatch

#endif  // DOZEWELL_POWERWATCH_WATCH_FOLDER_H_
