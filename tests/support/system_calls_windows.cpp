#include "support/system_calls_windows.h"

#include <objbase.h>
#include <windows.h>

#include <bit>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "base/utf8.h"

namespace dozewell::support {
namespace {

Calls systemCalls;

// Addresses below are handles, and so are those of the upper half, where no program has memory.
constexpr uint64_t kLowestMemory = 0x10000;
constexpr uint64_t kEndOfMemory = uint64_t{1} << 63;

template <typename Part>
Part* PartAt(void* program, size_t offset) {
  return reinterpret_cast<Part*>(static_cast<BYTE*>(program) + offset);
}

// The place of the address of a function that a program imports from a library; null when it
// imports none of that name.
ULONGLONG* FindImport(void* program, const IMAGE_IMPORT_DESCRIPTOR& library, const char* name) {
  auto* imported = PartAt<IMAGE_THUNK_DATA>(program, library.OriginalFirstThunk);
  auto* address = PartAt<IMAGE_THUNK_DATA>(program, library.FirstThunk);
  for (; imported->u1.AddressOfData != 0; ++imported, ++address) {
    if (IMAGE_SNAP_BY_ORDINAL(imported->u1.Ordinal)) continue;
    const auto* const found = PartAt<IMAGE_IMPORT_BY_NAME>(program, imported->u1.AddressOfData);
    if (std::strcmp(found->Name, name) == 0) return &address->u1.Function;
  }
  return nullptr;
}

ULONGLONG& FindImport(const char* name) {
  void* const program = GetModuleHandleW(nullptr);
  const auto* const headers = PartAt<IMAGE_NT_HEADERS>(
      program, static_cast<size_t>(PartAt<IMAGE_DOS_HEADER>(program, 0)->e_lfanew));
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* library = PartAt<IMAGE_IMPORT_DESCRIPTOR>(program, directory.VirtualAddress);
       library->Name != 0; ++library) {
    if (ULONGLONG* const place = FindImport(program, *library, name)) return *place;
  }
  throw std::runtime_error(std::string("this program does not import ") + name);
}

}  // namespace

std::string ArgumentText(uint64_t number) {
  char text[20];
  std::snprintf(text, sizeof(text), "0x%llX", static_cast<unsigned long long>(number));
  return text;
}

std::string ArgumentText(const char* text) {
  return text == nullptr ? "null" : '"' + std::string(text) + '"';
}

std::string ArgumentText(const wchar_t* text) {
  return text == nullptr ? "null" : '"' + NarrowToUtf8(text) + '"';
}

std::string ArgumentText(const unsigned short* text) {
  return ArgumentText(reinterpret_cast<const wchar_t*>(text));
}

std::string ArgumentText(const void* address) {
  const auto number = std::bit_cast<uint64_t>(address);
  if (number == 0) return "null";
  return number < kLowestMemory || number >= kEndOfMemory ? ArgumentText(number) : "memory";
}

std::string GuidText(const void* guid) {
  GUID copy;
  std::memcpy(&copy, guid, sizeof(copy));
  wchar_t text[39];
  StringFromGUID2(copy, text, 39);
  return NarrowToUtf8(text);
}

void NoteSystemCall(const std::string& call) { systemCalls.push_back(call); }

Calls TakeSystemCalls() { return std::exchange(systemCalls, {}); }

void* ReplaceImport(const char* name, void* function) {
  ULONGLONG& place = FindImport(name);
  DWORD protection = 0;
  VirtualProtect(&place, sizeof(place), PAGE_READWRITE, &protection);
  void* const before =
      std::bit_cast<void*>(std::exchange(place, std::bit_cast<ULONGLONG>(function)));
  VirtualProtect(&place, sizeof(place), protection, &protection);
  return before;
}

}  // namespace dozewell::support
