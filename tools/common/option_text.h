#ifndef DOZEWELL_COMMON_OPTION_TEXT_H_
#define DOZEWELL_COMMON_OPTION_TEXT_H_

#include <cstdint>
#include <string>

#include "base/wall_clock.h"
#include "common/text.h"
#include "common/tool_error.h"

namespace dozewell {

// "NAME: not EXPECTED: TEXT": what is said of a text that was given for an option or an argument.
std::string WrongValue(const std::string& name, const std::string& expected,
                       const std::string& text);

// How times are given, for a WrongValue.
inline constexpr const char* kTimeForms =
    "a local time \"YYYY-MM-DD HH:MM\" or UTC seconds since 1970";

// The local time that was given for an option: a local time, with or without seconds and with a
// blank or a T before the hours, or seconds since 1970, UTC. Throws ToolError for any other text.
tm ParseTimeOption(const char* option, const std::string& text);

// The same as seconds since 1970, UTC, which may be any number when seconds are given.
int64_t ParseUtcOption(const char* option, const std::string& text);

// The whole number that was given for an option. Throws ToolError for any other text and for one
// below `low` or above `high`.
template <typename Number>
Number ParseNumberOption(const char* option, const std::string& text, Number low, Number high) {
  const auto number = ParseNumber<Number>(text);
  if (number && *number >= low && *number <= high) return *number;
  throw ToolError(WrongValue(
      option, "a whole number from " + std::to_string(low) + " to " + std::to_string(high), text));
}

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_OPTION_TEXT_H_
