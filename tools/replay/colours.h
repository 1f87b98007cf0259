#ifndef DOZEWELL_REPLAY_COLOURS_H_
#define DOZEWELL_REPLAY_COLOURS_H_

namespace dozewell::replay {

// Whether a terminal should get colours, by the environment's NO_COLOR and TERM, which are null
// when they are not set: not when the first is set to anything, nor on a dumb terminal.
bool ColoursAreWanted(const char* noColor, const char* term);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_COLOURS_H_
