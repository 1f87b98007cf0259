#include <windows.h>

#include <vector>

#include "setup/service_command.h"
#include "setup/system_error.h"

namespace dozewell::setup {
namespace {

// The bytes of a QUERY_SERVICE_CONFIGW and of the texts that it points to.
std::vector<BYTE> ConfigurationOf(void* service) {
  const auto handle = static_cast<SC_HANDLE>(service);
  DWORD size = 0;
  QueryServiceConfigW(handle, nullptr, 0, &size);
  std::vector<BYTE> bytes(size + sizeof(QUERY_SERVICE_CONFIGW));
  auto* const config = reinterpret_cast<QUERY_SERVICE_CONFIGW*>(bytes.data());
  if (QueryServiceConfigW(handle, config, static_cast<DWORD>(bytes.size()), &size) == 0) {
    throw SystemError("the service's configuration cannot be read", GetLastError());
  }
  return bytes;
}

const QUERY_SERVICE_CONFIGW& AsConfiguration(const std::vector<BYTE>& bytes) {
  return *reinterpret_cast<const QUERY_SERVICE_CONFIGW*>(bytes.data());
}

}  // namespace

std::wstring CommandOf(void* service) {
  return AsConfiguration(ConfigurationOf(service)).lpBinaryPathName;
}

uint32_t StartTypeOf(void* service) {
  return AsConfiguration(ConfigurationOf(service)).dwStartType;
}

}  // namespace dozewell::setup
