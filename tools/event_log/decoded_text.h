#ifndef DOZEWELL_EVENT_LOG_DECODED_TEXT_H_
#define DOZEWELL_EVENT_LOG_DECODED_TEXT_H_

#include <string>
#include <string_view>

namespace dozewell {

// The text of a file, in UTF-8 and without a byte order mark. UTF-16, in which PowerShell redirects
// output, is converted. Any other file is taken for UTF-8 and loses its mark only; a file in a
// console's code page passes as well, since its ASCII is the same.
std::string DecodeText(std::string_view bytes);

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_DECODED_TEXT_H_
