#ifndef DOZEWELL_TESTS_SUPPORT_REGISTRY_WINDOWS_H_
#define DOZEWELL_TESTS_SUPPORT_REGISTRY_WINDOWS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace dozewell::support {

// The registry's value types.
constexpr uint32_t kRegSz = 1;
constexpr uint32_t kRegBinary = 3;
constexpr uint32_t kRegDword = 4;
constexpr uint32_t kRegQword = 11;

struct RegistryValue {
  uint32_t type = 0;
  std::vector<uint8_t> data;

  bool operator==(const RegistryValue&) const = default;
};

RegistryValue Dword(uint32_t number);
RegistryValue Qword(int64_t number);
RegistryValue Text(const std::wstring& text);  // with its terminating zero

// The keys under HKEY_LOCAL_MACHINE that the product uses.
extern const wchar_t kCurrent[];
extern const wchar_t kBranding[];
extern const wchar_t kDefault[];

// All paths are below HKEY_LOCAL_MACHINE. Every function throws std::runtime_error when the
// registry refuses.
void CreateKey(const std::wstring& path);
bool KeyExists(const std::wstring& path);
void DeleteTree(const std::wstring& path);  // does nothing when there is none
void SetValue(const std::wstring& path, const std::wstring& name, const RegistryValue& value);
std::optional<RegistryValue> GetValue(const std::wstring& path, const std::wstring& name);

// Deletes the product's keys at its start and its end, and sets BrandingPresent as in a fresh
// process. The settings of an installed product are lost.
class CleanProductKeys {
 public:
  CleanProductKeys();
  ~CleanProductKeys();
  CleanProductKeys(const CleanProductKeys&) = delete;
  CleanProductKeys& operator=(const CleanProductKeys&) = delete;
};

}  // namespace dozewell::support

#endif  // DOZEWELL_TESTS_SUPPORT_REGISTRY_WINDOWS_H_
