#ifndef DOZEWELL_COMMON_PROGRAM_START_H_
#define DOZEWELL_COMMON_PROGRAM_START_H_

#include <string>
#include <vector>

namespace dozewell {

// What every program for Windows does first. Keeps the bytes of its input and output as they are,
// as on other systems. Returns the arguments in UTF-8, without the program's name.
std::vector<std::string> StartProgram(int argc, wchar_t** argv);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_PROGRAM_START_H_
