#ifndef DOZEWELL_COMMON_WRITE_TEXT_H_
#define DOZEWELL_COMMON_WRITE_TEXT_H_

#include <cstdio>
#include <string_view>

namespace dozewell {

// Writes UTF-8 text to standard output or standard error, and flushes it. A Windows console shows
// the characters whatever its code page is, and keeps that; everything else gets the bytes. False
// when this fails; errno then has the reason, if there is one.
bool WriteText(std::FILE* stream, std::string_view text);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_WRITE_TEXT_H_
