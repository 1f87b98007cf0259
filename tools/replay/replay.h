#ifndef DOZEWELL_REPLAY_REPLAY_H_
#define DOZEWELL_REPLAY_REPLAY_H_

#include <string>
#include <vector>

namespace dozewell::replay {

// Where the program's output and messages go.
struct Streams {
  bool outputShowsColours;
  bool messagesGoToTerminal;
  bool questionsCanBeAnswered;  // standard input is a terminal as well
};

// The whole program: runs the command that the arguments, in UTF-8 and without the program's name,
// ask for, and prints what it has to say to standard output and standard error. Returns the exit
// code: 0, or 2 after an error.
int RunReplay(const std::vector<std::string>& arguments, const Streams& streams);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_REPLAY_H_
