#ifndef DOZEWELL_COMMON_VERSION_H_
#define DOZEWELL_COMMON_VERSION_H_

namespace dozewell {

// The programs' version, such as "0.1.0".
extern const char* const kVersion;

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_VERSION_H_
