#ifndef DOZEWELL_DIAGNOSTICS_MESSAGE_FORMAT_H_
#define DOZEWELL_DIAGNOSTICS_MESSAGE_FORMAT_H_

#include <array>
#include <cstdint>

namespace dozewell {

using MessageBuffer = std::array<wchar_t, 1024>;

// Puts `argument` in place of the first of the conversions %d %i %u %x %X (each also with an l
// before its letter), and a percent sign in place of every %%. Anything else is copied as it
// stands, further conversions included: texts that come from exceptions may hold anything. The
// message always ends in a zero; what does not fit is cut off.
void FormatMessageText(const wchar_t* format, uint32_t argument, MessageBuffer& message);

}  // namespace dozewell

#endif  // DOZEWELL_DIAGNOSTICS_MESSAGE_FORMAT_H_
