#ifndef DOZEWELL_TESTS_SUPPORT_FILE_NAME_H_
#define DOZEWELL_TESTS_SUPPORT_FILE_NAME_H_

#include <algorithm>
#include <string>

#include "base/utf8.h"
#include "support/temp_folder.h"

namespace dozewell {

// A file of a test's folder, named as a user names it on a command line.
inline std::string FileName(const TempFolder& folder, const wchar_t* name) {
  std::wstring path = folder.File(name);
  std::replace(path.begin(), path.end(), L'\\', L'/');
  return NarrowToUtf8(path);
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_FILE_NAME_H_
