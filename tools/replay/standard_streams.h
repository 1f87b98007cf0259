#ifndef DOZEWELL_REPLAY_STANDARD_STREAMS_H_
#define DOZEWELL_REPLAY_STANDARD_STREAMS_H_

#include "replay/command.h"

namespace dozewell::replay {

// Whether a file of the command goes to standard output, which leaves no room there for what the
// command says. Throws ToolError when two of its files are the same standard stream, or when the
// JSON that is asked for would mix with a file.
bool WritesFileToOutput(const Command& command, const Options& options);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_STANDARD_STREAMS_H_
