#include "support/registry_windows.h"

#include <windows.h>

#include <cstring>
#include <stdexcept>

#include "settings/registry_keys.h"
#include "settings/settings_store.h"

namespace dozewell::support {

const wchar_t kCurrent[] = L"SOFTWARE\\Corisk\\Z7\\Current";
const wchar_t kBranding[] = L"SOFTWARE\\Corisk\\Z7\\Branding";
const wchar_t kDefault[] = L"SOFTWARE\\Corisk\\Z7\\Default";

namespace {

constexpr wchar_t kProductTree[] = L"SOFTWARE\\Corisk";

RegistryValue MakeValue(uint32_t type, const void* data, size_t size) {
  const auto* const bytes = static_cast<const uint8_t*>(data);
  return {type, std::vector<uint8_t>(bytes, bytes + size)};
}

void Check(LSTATUS status, const char* call) {
  if (status != ERROR_SUCCESS) {
    throw std::runtime_error(std::string(call) + " failed: " + std::to_string(status));
  }
}

RegistryKey Create(const std::wstring& path) {
  HKEY key = nullptr;
  Check(RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        &key, nullptr),
        "RegCreateKeyExW");
  return RegistryKey(key);
}

RegistryKey Open(const std::wstring& path) {
  HKEY key = nullptr;
  const LSTATUS status = RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key);
  return RegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

}  // namespace

RegistryValue Dword(uint32_t number) { return MakeValue(kRegDword, &number, sizeof(number)); }
RegistryValue Qword(int64_t number) { return MakeValue(kRegQword, &number, sizeof(number)); }
RegistryValue Text(const std::wstring& text) {
  return MakeValue(kRegSz, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

void CreateKey(const std::wstring& path) { Create(path); }

bool KeyExists(const std::wstring& path) { return Open(path) != nullptr; }

void DeleteTree(const std::wstring& path) {
  const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, path.c_str());
  if (status != ERROR_FILE_NOT_FOUND) Check(status, "RegDeleteTreeW");
}

void SetValue(const std::wstring& path, const std::wstring& name, const RegistryValue& value) {
  const RegistryKey key = Create(path);
  // The registry adds a terminating zero to text when one happens to follow the data in memory.
  std::vector<uint8_t> data = value.data;
  data.insert(data.end(), sizeof(wchar_t), 0xFF);
  Check(RegSetValueExW(static_cast<HKEY>(key.get()), name.c_str(), 0, value.type, data.data(),
                       static_cast<DWORD>(value.data.size())),
        "RegSetValueExW");
}

std::optional<RegistryValue> GetValue(const std::wstring& path, const std::wstring& name) {
  const RegistryKey key = Open(path);
  if (!key) return {};
  DWORD type = 0;
  DWORD size = 0;
  const HKEY handle = static_cast<HKEY>(key.get());
  if (RegQueryValueExW(handle, name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
    return {};
  }
  RegistryValue value{type, std::vector<uint8_t>(size)};
  Check(RegQueryValueExW(handle, name.c_str(), nullptr, nullptr, value.data.data(), &size),
        "RegQueryValueExW");
  return value;
}

CleanProductKeys::CleanProductKeys() {
  DeleteTree(kProductTree);
  BrandingPresent = true;
}

CleanProductKeys::~CleanProductKeys() {
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, kProductTree);
  BrandingPresent = true;
}

}  // namespace dozewell::support
