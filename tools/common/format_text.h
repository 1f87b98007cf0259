#ifndef DOZEWELL_COMMON_FORMAT_TEXT_H_
#define DOZEWELL_COMMON_FORMAT_TEXT_H_

#include <cstdio>
#include <string>

// Has the compiler check arguments against their format, by the rules of the printf that is linked.
#if defined(__MINGW_PRINTF_FORMAT)
#define DOZEWELL_PRINTF_LIKE __attribute__((format(__MINGW_PRINTF_FORMAT, 1, 2)))
#elif defined(__GNUC__)
#define DOZEWELL_PRINTF_LIKE __attribute__((format(printf, 1, 2)))
#else
#define DOZEWELL_PRINTF_LIKE
#endif

namespace dozewell {

// What printf would print.
DOZEWELL_PRINTF_LIKE std::string FormatText(const char* format, ...);

}  // namespace dozewell

#undef DOZEWELL_PRINTF_LIKE

#endif  // DOZEWELL_COMMON_FORMAT_TEXT_H_
