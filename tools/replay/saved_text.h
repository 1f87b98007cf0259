#ifndef DOZEWELL_REPLAY_SAVED_TEXT_H_
#define DOZEWELL_REPLAY_SAVED_TEXT_H_

#include <cstddef>
#include <string>

#include "replay/command.h"

namespace dozewell::replay {

// What a command says that has saved so many records in the file that the user named.
std::string SavedText(const Options& options, size_t records);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_SAVED_TEXT_H_
