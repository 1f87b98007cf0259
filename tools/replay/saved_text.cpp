#include "replay/saved_text.h"

#include "common/json.h"

namespace dozewell::replay {

std::string SavedText(const Options& options, size_t records) {
  return options.json ? JsonLine({{"records", records}})
                      : options.out.value() + ": " + std::to_string(records) + " records\n";
}

}  // namespace dozewell::replay
