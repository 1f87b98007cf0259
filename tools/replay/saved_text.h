#ifndef DOZEWELL_REPLAY_SAVED_TEXT_H_
#define DOZEWELL_REPLAY_SAVED_TEXT_H_

#include <span>
#include <string>

#include "prediction/history_file.h"
#include "replay/command.h"

namespace dozewell::replay {

// What a command says that has saved these records in the file that the user named.
std::string SavedText(const Options& options, std::span<const HistoryRecord> records,
                      MachineIdentity identity);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_SAVED_TEXT_H_
