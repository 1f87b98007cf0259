#ifndef DOZEWELL_COMMON_TOOL_ERROR_H_
#define DOZEWELL_COMMON_TOOL_ERROR_H_

#include <stdexcept>

namespace dozewell {

// An error that ends a command. Its message is the one line that the user reads: which file, line
// or option is wrong, and why.
class ToolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_TOOL_ERROR_H_
