#ifndef DOZEWELL_CTL_LIVE_FILES_H_
#define DOZEWELL_CTL_LIVE_FILES_H_

#include <optional>
#include <string>

#include "base/wall_clock.h"

namespace dozewell::ctl {

// The path of a file in the service's data folder, which is not created. Throws ToolError when
// Windows does not know of such a folder.
std::wstring LiveFilePath(const wchar_t* name);

// The time of the last event that the service has saved in its data file; nothing when that cannot
// be told.
std::optional<tm> TimeOfSavedData();

// Throws ToolError when an output, as the user named it, is one of the service's own files.
void RequireNoServiceFile(const std::string& output);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LIVE_FILES_H_
