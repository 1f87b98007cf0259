#include "replay/colours.h"

#include <string_view>

namespace dozewell::replay {

bool ColoursAreWanted(const char* noColor, const char* term) {
  const bool isRefused = noColor != nullptr && *noColor != '\0';
  const bool isDumb = term != nullptr && std::string_view(term) == "dumb";
  return !isRefused && !isDumb;
}

}  // namespace dozewell::replay
