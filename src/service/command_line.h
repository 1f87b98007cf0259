#ifndef DOZEWELL_SERVICE_COMMAND_LINE_H_
#define DOZEWELL_SERVICE_COMMAND_LINE_H_

namespace dozewell {

// Does what the first argument says, in upper or lower case: none runs the service under the
// service control manager, "-i" installs it, "-u" uninstalls it, "-local" runs it in this console;
// anything else prints the usage. Returns the process's exit code: -1 after the usage, 0 otherwise.
// The main thread; the process ends after it.
int RunCommandLine(int argc, const wchar_t* const* argv);

}  // namespace dozewell

#endif  // DOZEWELL_SERVICE_COMMAND_LINE_H_
