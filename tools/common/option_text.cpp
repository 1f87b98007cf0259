#include "common/option_text.h"

#include "common/local_time.h"

namespace dozewell {

tm ParseTimeOption(const char* option, const std::string& text) {
  const auto time = ParseLocalTime(text);
  if (!time) {
    throw ToolError(std::string(option) + ": not a local time YYYY-MM-DDTHH:MM:SS: " + text);
  }
  return *time;
}

}  // namespace dozewell
