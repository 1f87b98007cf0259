#ifndef DOZEWELL_COMMON_INPUT_FILE_H_
#define DOZEWELL_COMMON_INPUT_FILE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dozewell {

// The most bytes that are read of a file, so that an endless one is refused while it still fits
// into memory: a century of CSV with 100 records a day, and a large export of an event log.
inline constexpr size_t kMostOfHistory = size_t{36525} * 100 * 32;
inline constexpr size_t kMostOfEventLog = size_t{512} << 20;

// The whole content of the file that the user named, which may be a pipe or standard input. Throws
// ToolError when it is missing, cannot be read or is too large.
std::vector<unsigned char> ReadInput(const std::string& name, size_t most = kMostOfHistory);

// The same, but nothing when there is no such file.
std::optional<std::vector<unsigned char>> ReadInputIfExists(const std::string& name,
                                                            size_t most = kMostOfHistory);

// Bytes as text.
std::string_view AsText(const std::vector<unsigned char>& bytes);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_INPUT_FILE_H_
