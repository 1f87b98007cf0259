#ifndef DOZEWELL_TESTS_SUPPORT_PROGRAM_DATA_WINDOWS_H_
#define DOZEWELL_TESTS_SUPPORT_PROGRAM_DATA_WINDOWS_H_

#include <optional>
#include <string>

#include "support/registry_windows.h"

namespace dozewell::support {

// Moves the system's program-data folder for its lifetime.
class ProgramDataAt {
 public:
  explicit ProgramDataAt(const std::wstring& path);
  ~ProgramDataAt();
  ProgramDataAt(const ProgramDataAt&) = delete;
  ProgramDataAt& operator=(const ProgramDataAt&) = delete;

 private:
  const std::optional<RegistryValue> original_;
};

bool IsFolder(const std::wstring& path);

}  // namespace dozewell::support

#endif  // DOZEWELL_TESTS_SUPPORT_PROGRAM_DATA_WINDOWS_H_
