#include <windows.h>

#include <cwchar>

#include "settings/registry_keys.h"
#include "setup/empty_key.h"
#include "setup/system_error.h"
#include "setup/undo_notes.h"
namespace dozewell::setup {
namespace {

constexpr wchar_t kUndoKey[] = L"SOFTWARE\\Corisk\\Z7\\Undo";

void RequireNotes(LSTATUS status, const char* failure) {
  if (status != ERROR_SUCCESS) throw SystemError(failure, static_cast<uint32_t>(status));
}

}  // namespace

UndoNotes::UndoNotes(const wchar_t* step) : step_(step) {
  RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kUndoKey, step_);
}

void UndoNotes::Add(const std::wstring& note) {
  notes_.append(note).push_back(L'\0');
  HKEY created = nullptr;
  RequireNotes(RegCreateKeyExW(HKEY_LOCAL_MACHINE, kUndoKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                               &created, nullptr),
               "what undoes the installation cannot be noted");
  const RegistryKey key(created);
  // The terminating zero of the text ends the list.
  RequireNotes(
      RegSetValueExW(created, step_, 0, REG_MULTI_SZ, reinterpret_cast<const BYTE*>(notes_.c_str()),
                     static_cast<DWORD>((notes_.size() + 1) * sizeof(wchar_t))),
      "what undoes the installation cannot be noted");
}

std::vector<std::wstring> ReadUndoNotes(const wchar_t* step) {
  DWORD size = 0;
  LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, kUndoKey, step, RRF_RT_REG_MULTI_SZ, nullptr,
                                nullptr, &size);
  if (status == ERROR_FILE_NOT_FOUND) return {};
  std::vector<wchar_t> text(size / sizeof(wchar_t) + 2);
  if (status == ERROR_SUCCESS) {
    status = RegGetValueW(HKEY_LOCAL_MACHINE, kUndoKey, step, RRF_RT_REG_MULTI_SZ, nullptr,
                          text.data(), &size);
  }
  RequireNotes(status, "what undoes the installation cannot be read");
  std::vector<std::wstring> notes;
  for (const wchar_t* note = text.data(); *note != L'\0'; note += std::wcslen(note) + 1) {
    notes.emplace_back(note);
  }
  return notes;
}

void ForgetUndoNotes() {
  const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, kUndoKey);
  if (status != ERROR_FILE_NOT_FOUND) {
    RequireNotes(status, "what undoes the installation cannot be forgotten");
  }
  DeleteProductKeysIfEmpty();
}

}  // namespace dozewell::setup
