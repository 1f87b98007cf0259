#ifndef DOZEWELL_COMMON_INPUT_FILE_H_
#define DOZEWELL_COMMON_INPUT_FILE_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dozewell {

// The whole content of the file that the user named, which may be a pipe. Throws ToolError when
// it is missing or cannot be read.
std::vector<unsigned char> ReadInput(const std::string& name);

// The same, but nothing when there is no such file.
std::optional<std::vector<unsigned char>> ReadInputIfExists(const std::string& name);

// Bytes as text.
std::string_view AsText(const std::vector<unsigned char>& bytes);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_INPUT_FILE_H_
