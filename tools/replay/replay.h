#ifndef DOZEWELL_REPLAY_REPLAY_H_
#define DOZEWELL_REPLAY_REPLAY_H_

#include <string>
#include <vector>

namespace dozewell {

// The whole program: runs the command that the arguments, in UTF-8 and without the program's name,
// ask for, and prints what it has to say to standard output and standard error. `colour` says that
// standard output shows colours. Returns the exit code: 0, or 2 after an error.
int RunReplay(const std::vector<std::string>& arguments, bool colour);

}  // namespace dozewell

#endif  // DOZEWELL_REPLAY_REPLAY_H_
