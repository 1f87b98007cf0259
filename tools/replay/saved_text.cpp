#include "replay/saved_text.h"

namespace dozewell::replay {

std::string SavedText(const Options& options, size_t records) {
  const std::string count = std::to_string(records);
  return options.json ? "{\"records\":" + count + "}\n"
                      : options.out.value() + ": " + count + " records\n";
}

}  // namespace dozewell::replay
