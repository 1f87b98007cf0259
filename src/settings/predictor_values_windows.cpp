#include <windows.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <system_error>
#include <vector>

#include "base/numbers.h"
#include "settings/predictor_values.h"
#include "settings/registry_keys.h"
#include "settings/setting_names.h"

namespace dozewell {
namespace {

constexpr size_t kMaxDecimalCharacters = 9;

RegistryKey OpenSubkey(void* parent, const char* path) {
  HKEY key = nullptr;
  const LSTATUS status = RegOpenKeyExA(static_cast<HKEY>(parent), path, 0, KEY_READ, &key);
  return RegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

RegistryKey CreateSubkey(void* parent, const char* path) {
  HKEY key = nullptr;
  const LSTATUS status =
      RegCreateKeyExA(static_cast<HKEY>(parent), path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                      KEY_ALL_ACCESS, nullptr, &key, nullptr);
  return RegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

std::string ReadText(HKEY section, const std::string& name, DWORD size) {
  // One byte more, which stays zero: text in the registry need not end in a zero.
  std::vector<char> data(size_t{size} + 1);
  const LSTATUS status = RegQueryValueExA(section, name.c_str(), nullptr, nullptr,
                                          reinterpret_cast<BYTE*>(data.data()), &size);
  return status == ERROR_SUCCESS ? data.data() : "";
}

std::string ReadDecimal(HKEY section, const std::string& name) {
  int32_t number = 0;
  DWORD size = sizeof(number);
  const LSTATUS status = RegQueryValueExA(section, name.c_str(), nullptr, nullptr,
                                          reinterpret_cast<BYTE*>(&number), &size);
  std::array<char, kMaxDecimalCharacters> digits;
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  const bool converted = status == ERROR_SUCCESS && error == std::errc{};
  return converted ? std::string(digits.data(), end) : std::string();
}

// False when the section or the value is missing.
bool ReadValue(void* predictors, const std::string& section, const std::string& name,
               std::string& text) {
  const RegistryKey sectionKey = OpenSubkey(predictors, section.c_str());
  if (!sectionKey) return false;
  const HKEY key = static_cast<HKEY>(sectionKey.get());
  DWORD type = REG_NONE;
  DWORD size = 0;
  if (RegQueryValueExA(key, name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
    return false;
  }
  if (type == REG_SZ) {
    text = ReadText(key, name, size);
  } else if (type == REG_DWORD) {
    text = ReadDecimal(key, name);
  }
  return true;
}

bool WriteData(HKEY section, const std::string& name, DWORD type, const void* data, size_t size) {
  return RegSetValueExA(section, name.c_str(), 0, type, static_cast<const BYTE*>(data),
                        static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

}  // namespace

std::string ReadPredictorValue(const std::string& section, const std::string& name) {
  std::string text;
  const RegistryKey current = OpenSubkey(HKEY_LOCAL_MACHINE, kPredictorsForReading);
  if (!current || !ReadValue(current.get(), section, name, text)) {
    QueryFallbackKeys([&](void* key) {
      const RegistryKey predictors = OpenSubkey(key, kPredictorsSubkey);
      return predictors && ReadValue(predictors.get(), section, name, text);
    });
  }
  return text;
}

bool WritePredictorValue(const std::string& section, const std::string& name,
                         const std::string& text) {
  const RegistryKey predictors = CreateSubkey(HKEY_LOCAL_MACHINE, kPredictorsForWriting);
  if (!predictors) return false;
  const RegistryKey sectionKey = CreateSubkey(predictors.get(), section.c_str());
  if (!sectionKey) return false;
  const HKEY key = static_cast<HKEY>(sectionKey.get());
  DWORD type = REG_NONE;
  if (RegQueryValueExA(key, name.c_str(), nullptr, &type, nullptr, nullptr) != ERROR_SUCCESS) {
    type = REG_SZ;
  }
  if (type == REG_SZ) return WriteData(key, name, REG_SZ, text.c_str(), text.size() + 1);
  if (type == REG_DWORD) {
    const int32_t number = Atoi(text);
    return WriteData(key, name, REG_DWORD, &number, sizeof(number));
  }
  return false;
}

}  // namespace dozewell
