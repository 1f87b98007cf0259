#ifndef DOZEWELL_COMMON_TOOL_ERROR_H_
#define DOZEWELL_COMMON_TOOL_ERROR_H_

#include <stdexcept>

namespace dozewell {

// What ends a command, as the one line that the user reads: which file, line or option, and what
// is wrong with it.
class ToolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_TOOL_ERROR_H_
