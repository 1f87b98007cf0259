#include <windows.h>

#include <memory>

#include "agent/commands.h"

namespace dozewell::lab {
namespace {

constexpr char kCurrentUser[] = "HKCU\\";

struct KeyCloser {
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, KeyCloser>;

void Check(LSTATUS status) {
  if (status != ERROR_SUCCESS) throw SystemError{static_cast<uint32_t>(status)};
}

struct KeyPath {
  explicit KeyPath(const std::string& name)
      : root(name.starts_with(kCurrentUser) ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE),
        path(ToWide(root == HKEY_CURRENT_USER ? name.substr(sizeof(kCurrentUser) - 1) : name)) {}

  HKEY root;
  std::wstring path;
};

Key OpenKey(const std::string& name, REGSAM access) {
  const KeyPath place(name);
  HKEY key = nullptr;
  Check(RegOpenKeyExW(place.root, place.path.c_str(), 0, access, &key));
  return Key(key);
}

}  // namespace

Fields ReadValue(const Fields& arguments) {
  const Key key = OpenKey(arguments[0], KEY_READ);
  const std::wstring name = ToWide(arguments[1]);
  DWORD type = 0;
  DWORD size = 0;
  Check(RegQueryValueExW(key.get(), name.c_str(), nullptr, &type, nullptr, &size));
  std::vector<uint8_t> data(size);
  Check(RegQueryValueExW(key.get(), name.c_str(), nullptr, &type, data.data(), &size));
  return {std::to_string(type), ToHex(data.data(), size)};
}

Fields WriteValue(const Fields& arguments) {
  const KeyPath place(arguments[0]);
  HKEY opened = nullptr;
  Check(RegCreateKeyExW(place.root, place.path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        &opened, nullptr));
  const Key key(opened);
  const std::vector<uint8_t> data = FromHex(arguments[3]);
  Check(RegSetValueExW(key.get(), ToWide(arguments[1]).c_str(), 0, ToNumber(arguments[2]),
                       data.data(), static_cast<DWORD>(data.size())));
  return {};
}

Fields DeleteValue(const Fields& arguments) {
  Check(RegDeleteValueW(OpenKey(arguments[0], KEY_SET_VALUE).get(), ToWide(arguments[1]).c_str()));
  return {};
}

Fields ListValues(const Fields& arguments) {
  const Key key = OpenKey(arguments[0], KEY_READ);
  Fields names;
  for (DWORD place = 0;; ++place) {
    wchar_t name[256];
    DWORD length = 256;
    const LSTATUS status =
        RegEnumValueW(key.get(), place, name, &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_NO_MORE_ITEMS) return names;
    Check(status);
    names.push_back(ToNarrow(std::wstring(name, length)));
  }
}

Fields DeleteKey(const Fields& arguments) {
  const KeyPath place(arguments[0]);
  Check(RegDeleteTreeW(place.root, place.path.c_str()));
  return {};
}

}  // namespace dozewell::lab
