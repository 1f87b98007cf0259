#ifndef DOZEWELL_CTL_TERMINAL_H_
#define DOZEWELL_CTL_TERMINAL_H_

namespace dozewell::ctl {

// True when somebody can type at standard input; false for a file, a pipe and none.
bool InputIsTerminal();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_TERMINAL_H_
