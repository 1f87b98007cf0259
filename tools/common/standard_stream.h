#ifndef DOZEWELL_COMMON_STANDARD_STREAM_H_
#define DOZEWELL_COMMON_STANDARD_STREAM_H_

#include <string_view>

namespace dozewell {

inline constexpr const char* kStandardStream = "-";

// True for the name that means standard input where a file is read, and standard output where one
// is written.
constexpr bool IsStandardStream(std::string_view name) { return name == kStandardStream; }

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_STANDARD_STREAM_H_
