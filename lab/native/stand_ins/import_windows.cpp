#include <windows.h>

#include <bit>
#include <string>

#include "stand_ins/import.h"
#include "stand_ins/service_record.h"

namespace dozewell::lab {
namespace {

template <typename Part>
Part* PartAt(void* program, size_t offset) {
  return reinterpret_cast<Part*>(static_cast<BYTE*>(program) + offset);
}

// Visits each imported function with its name and the place that holds its address.
template <typename Visit>
void VisitImports(void* program, Visit visit) {
  const auto* const headers = PartAt<IMAGE_NT_HEADERS>(
      program, static_cast<size_t>(PartAt<IMAGE_DOS_HEADER>(program, 0)->e_lfanew));
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  if (directory.VirtualAddress == 0) return;
  for (auto* library = PartAt<IMAGE_IMPORT_DESCRIPTOR>(program, directory.VirtualAddress);
       library->Name != 0; ++library) {
    auto* name = PartAt<IMAGE_THUNK_DATA>(program, library->OriginalFirstThunk);
    auto* address = PartAt<IMAGE_THUNK_DATA>(program, library->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      visit(PartAt<IMAGE_IMPORT_BY_NAME>(program, name->u1.AddressOfData)->Name,
            address->u1.Function);
    }
  }
}

}  // namespace

uint32_t CountCall(size_t place) {
  SystemCallState& call = Machine->calls[place];
  const uint32_t number = ++call.made;
  while (call.holdAt == number) Sleep(1);
  const uint32_t from = call.failFrom;
  if (from == 0 || number < from || number > call.failTo) return 0;
  const uint32_t error = call.error;
  Record("failed", std::string(kSystemCalls[place]) + " " + std::to_string(error));
  return error;
}

ImportedFunction* ImportedFunction::First_ = nullptr;

ImportedFunction::ImportedFunction(size_t place, void* standIn)
    : place_(place), standIn_(standIn), next_(First_) {
  First_ = this;
}

ImportedFunction* ImportedFunction::Find(std::string_view name) {
  ImportedFunction* function = First_;
  while (function != nullptr && kSystemCalls[function->place_] != name) function = function->next_;
  return function;
}

void ImportedFunction::ReplaceAll(void* program) {
  VisitImports(program, [](const char* name, ULONGLONG& address) {
    if (void* const standIn = StandInFor(name, std::bit_cast<void*>(address))) {
      DWORD protection = 0;
      VirtualProtect(&address, sizeof(address), PAGE_READWRITE, &protection);
      address = reinterpret_cast<ULONGLONG>(standIn);
      VirtualProtect(&address, sizeof(address), protection, &protection);
    }
  });
}

void* ImportedFunction::StandInFor(std::string_view name, void* system) {
  ImportedFunction* const function = Find(name);
  if (function == nullptr) return nullptr;
  function->system_ = system;
  return function->standIn_;
}

}  // namespace dozewell::lab
