#ifndef DOZEWELL_CTL_READ_ACCESS_H_
#define DOZEWELL_CTL_READ_ACCESS_H_

#include <string>

namespace dozewell::ctl {

// Whether there is a file or folder of this path that the system does not let this user read.
bool IsReadingDenied(const std::wstring& path);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_READ_ACCESS_H_
