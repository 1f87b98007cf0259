#ifndef DOZEWELL_TESTS_SUPPORT_FILE_NAME_H_
#define DOZEWELL_TESTS_SUPPORT_FILE_NAME_H_

#include <algorithm>
#include <string>

#include "base/utf8.h"
#include "support/temp_folder.h"

namespace dozewell {

// The name by which a user would give a program a file in a folder of a test.
inline std::string FileName(const TempFolder& folder, const wchar_t* name) {
  std::wstring path = folder.File(name);
  std::replace(path.begin(), path.end(), L'\\', L'/');
  return NarrowToUtf8(path);
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_FILE_NAME_H_
