#ifndef DOZEWELL_COMMON_PLAIN_TEXT_H_
#define DOZEWELL_COMMON_PLAIN_TEXT_H_

#include <string>
#include <string_view>

namespace dozewell {

// The text with `replacement` for each character that a terminal may obey instead of showing it:
// the control characters of ASCII and of Latin-1, those that end a line or change the direction of
// writing, and bytes that would be such a control character outside UTF-8.
std::string PlainText(std::string_view text, char replacement);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_PLAIN_TEXT_H_
