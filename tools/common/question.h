#ifndef DOZEWELL_COMMON_QUESTION_H_
#define DOZEWELL_COMMON_QUESTION_H_

#include <string>

namespace dozewell {

// Asks the user on standard error, and reads the answer from standard input, which may be a
// terminal. True for yes; no answer counts as no.
bool Confirm(const std::string& question, bool inputIsTerminal);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_QUESTION_H_
