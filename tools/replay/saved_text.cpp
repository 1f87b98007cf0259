#include "replay/saved_text.h"

namespace dozewell::replay {

std::string SavedText(const Options& options, std::span<const HistoryRecord> records,
                      MachineIdentity identity) {
  identity.time = TimeOfLast(records);
  return options.json ? IdentifiedLine({{"records", records.size()}}, identity)
                      : options.out.value() + ": " + std::to_string(records.size()) + " records\n";
}

}  // namespace dozewell::replay
