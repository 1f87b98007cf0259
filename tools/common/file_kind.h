#ifndef DOZEWELL_COMMON_FILE_KIND_H_
#define DOZEWELL_COMMON_FILE_KIND_H_

#include <span>
#include <string>

namespace dozewell {

// No zero byte near the beginning, which both binary kinds have everywhere, or a mark of UTF-16.
bool IsText(std::span<const unsigned char> content);

// The bytes of "cpredict.z7", for whatever cycle.
bool IsDataFile(std::span<const unsigned char> content);

// Each of these throws ToolError, with `name`, when the content of a file is clearly that of
// another kind of file than the one that is needed. How damaged it is does not matter.

// The bytes of "zs7state.dat".
void RequireHistory(const std::string& name, std::span<const unsigned char> content);
// The bytes of "cpredict.z7".
void RequireDataFile(const std::string& name, std::span<const unsigned char> content);
// A CSV history.
void RequireCsv(const std::string& name, std::span<const unsigned char> content);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_FILE_KIND_H_
