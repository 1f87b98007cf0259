#ifndef DOZEWELL_COMMON_OPTION_TEXT_H_
#define DOZEWELL_COMMON_OPTION_TEXT_H_

#include <string>

#include "base/wall_clock.h"
#include "common/text.h"
#include "common/tool_error.h"

namespace dozewell {

// The time YYYY-MM-DDTHH:MM:SS that was given for an option. Throws ToolError for any other text.
tm ParseTimeOption(const char* option, const std::string& text);

// The whole number that was given for an option. Throws ToolError for any other text and for one
// below `low` or above `high`.
template <typename Number>
Number ParseNumberOption(const char* option, const std::string& text, Number low, Number high) {
  const auto number = ParseNumber<Number>(text);
  if (number && *number >= low && *number <= high) return *number;
  throw ToolError(std::string(option) + ": not a whole number from " + std::to_string(low) +
                  " to " + std::to_string(high) + ": " + text);
}

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_OPTION_TEXT_H_
