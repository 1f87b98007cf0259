#ifndef DOZEWELL_COMMON_SERVICE_FILE_H_
#define DOZEWELL_COMMON_SERVICE_FILE_H_

#include <string>

namespace dozewell {

// A save of the service that was interrupted leaves new content waiting beside its history or data
// file, which counts instead of the file. These functions look for it beside files of those two
// names only, in any folder.

// The name of the file with the content that counts: the file itself, or what waits beside it.
std::string NameThatCounts(const std::string& name);

// Deletes what waits beside a file that was replaced.
void RemoveWaiting(const std::wstring& path);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_SERVICE_FILE_H_
