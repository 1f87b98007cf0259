#include "common/option_text.h"

#include <optional>

#include "common/local_time.h"
#include "common/utc_time.h"

namespace dozewell {

std::string WrongValue(const std::string& name, const std::string& expected,
                       const std::string& text) {
  return name + ": not " + expected + ": " + (text.empty() ? "\"\"" : text);
}

tm ParseTimeOption(const char* option, const std::string& text) {
  if (const auto time = ParseLooseLocalTime(text)) return *time;
  const auto seconds = ParseNumber<int64_t>(text);
  tm time;
  if (seconds && LocalTimeFromUtc(*seconds, time)) return time;
  throw ToolError(WrongValue(option, kTimeForms, text));
}

int64_t ParseUtcOption(const char* option, const std::string& text) {
  if (const auto seconds = ParseNumber<int64_t>(text)) return *seconds;
  if (const auto time = ParseLooseLocalTime(text)) {
    if (const auto seconds = UtcFromLocalTime(*time)) return *seconds;
  }
  throw ToolError(WrongValue(option, kTimeForms, text));
}

}  // namespace dozewell
