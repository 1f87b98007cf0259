#include "support/system_calls_windows.h"

#include <objbase.h>
#include <windows.h>

#include <bit>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "base/utf8.h"
#include "support/program_imports.h"

namespace dozewell::support {
namespace {

Calls systemCalls;

// Addresses below are handles, and so are those of the upper half, where no program has memory.
constexpr uint64_t kLowestMemory = 0x10000;
constexpr uint64_t kEndOfMemory = uint64_t{1} << 63;

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
  void* before = nullptr;
  VisitImports(GetModuleHandleW(nullptr), [&](const char* imported, uint64_t& address) {
    if (before == nullptr && std::strcmp(imported, name) == 0) {
      before = ReplaceAddress(address, function);
    }
  });
  if (before == nullptr) {
    throw std::runtime_error(std::string("this program does not import ") + name);
  }
  return before;
}

}  // namespace dozewell::support
