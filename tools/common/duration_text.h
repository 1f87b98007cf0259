#ifndef DOZEWELL_COMMON_DURATION_TEXT_H_
#define DOZEWELL_COMMON_DURATION_TEXT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace dozewell {

// The minutes of "45", "45m", "45min", "3h", "1h30m" or "2d 3h 5min": units from the longest on,
// each at most once, blanks between allowed. Nothing for any other text.
std::optional<int64_t> ParseDuration(std::string_view text);

// The same, and 0 for "never": a timeout, where 0 means that it never ends.
std::optional<int64_t> ParseTimeout(std::string_view text);

// The timeouts up to `most` minutes, in words.
std::string TimeoutRange(int64_t most);

// "45 min", "3 h 05 min", "2 d 03 h 05 min".
std::string DurationText(int64_t minutes);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_DURATION_TEXT_H_
