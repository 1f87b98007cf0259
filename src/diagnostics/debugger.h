#ifndef DOZEWELL_DIAGNOSTICS_DEBUGGER_H_
#define DOZEWELL_DIAGNOSTICS_DEBUGGER_H_

namespace dozewell {

// Sends the text, as it stands, to the debugger output. Any thread.
void TraceToDebugger(const wchar_t* text);

}  // namespace dozewell

#endif  // DOZEWELL_DIAGNOSTICS_DEBUGGER_H_
