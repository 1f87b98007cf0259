#include <windows.h>

#include "base/utf8.h"
#include "ctl/machine_name.h"

namespace dozewell::ctl {

std::optional<std::string> ReadMachineName() {
  DWORD size = 0;
  GetComputerNameExW(ComputerNamePhysicalDnsHostname, nullptr, &size);
  std::wstring name(size, L'\0');
  if (GetComputerNameExW(ComputerNamePhysicalDnsHostname, name.data(), &size) == 0) {
    return std::nullopt;
  }
  name.resize(size);
  return NarrowToUtf8(name);
}

}  // namespace dozewell::ctl
