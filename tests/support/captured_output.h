#ifndef DOZEWELL_TESTS_SUPPORT_CAPTURED_OUTPUT_H_
#define DOZEWELL_TESTS_SUPPORT_CAPTURED_OUTPUT_H_

#include <functional>
#include <string>

namespace dozewell {

// What `run` writes to standard output; lines end with "\n".
std::string OutputOf(const std::function<void()>& run);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_CAPTURED_OUTPUT_H_
