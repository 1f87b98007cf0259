#ifndef DOZEWELL_CTL_CHECK_MESSAGE_FILE_H_
#define DOZEWELL_CTL_CHECK_MESSAGE_FILE_H_

#include <cstdint>
#include <string>

namespace dozewell::ctl {

// Looks in a file, whose code is not run, for the text of the service's events. 0, or the system's
// error when the file cannot be read or has no such text.
uint32_t FindEventText(const std::string& path);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_MESSAGE_FILE_H_
