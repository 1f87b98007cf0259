#ifndef DOZEWELL_CTL_CHECK_PROGRAM_PATH_H_
#define DOZEWELL_CTL_CHECK_PROGRAM_PATH_H_

#include <string>
#include <string_view>

namespace dozewell::ctl {

// The program that a service's command starts: what is in quotation marks, or all up to the first
// ".exe" that a blank or the end follows.
std::string ProgramOf(std::string_view command);

// Windows would try what stands before the first blank of such a command first.
bool IsAmbiguous(std::string_view command);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_PROGRAM_PATH_H_
