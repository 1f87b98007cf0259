#ifndef DOZEWELL_EVENT_LOG_DECODED_TEXT_H_
#define DOZEWELL_EVENT_LOG_DECODED_TEXT_H_

#include <string>
#include <string_view>

namespace dozewell {

// The text of a file in UTF-16, as PowerShell redirects output, in UTF-8 and without a byte order
// mark. Any other file is taken for UTF-8 and stays as it is, but for the mark; a console's own
// code page does so too, since it has the same ASCII.
std::string DecodeText(std::string_view bytes);

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_DECODED_TEXT_H_
