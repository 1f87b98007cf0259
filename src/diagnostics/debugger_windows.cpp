#include <windows.h>

#include "diagnostics/debugger.h"

namespace dozewell {

void TraceToDebugger(const wchar_t* text) { OutputDebugStringW(text); }

}  // namespace dozewell
