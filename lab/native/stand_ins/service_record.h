#ifndef DOZEWELL_LAB_STAND_INS_SERVICE_RECORD_H_
#define DOZEWELL_LAB_STAND_INS_SERVICE_RECORD_H_

#include <cstdio>
#include <string>

#include "shared/machine_state.h"

namespace dozewell::lab {

// The machine's state, which is mapped before the program runs.
extern MachineState* Machine;

// Adds a line to the machine's record: what kind of thing happened, and its text, in which line
// ends, tabs and backslashes are escaped. Any thread of any process may call it; lines never mix.
void Record(const char* kind, const std::string& text);
void Record(const char* kind, const wchar_t* text);

// Formats as printf does; the text is cut off after a kilobyte.
std::string Format(const char* format, ...) __attribute__((format(__MINGW_PRINTF_FORMAT, 1, 2)));

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_STAND_INS_SERVICE_RECORD_H_
