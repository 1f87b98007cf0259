#include <windows.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "support/program_imports.h"

namespace dozewell::support {
namespace {

template <typename Part>
Part* PartAt(void* program, size_t offset) {
  return reinterpret_cast<Part*>(static_cast<BYTE*>(program) + offset);
}

}  // namespace

void VisitImports(void* program, const ImportVisitor& visit) {
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

void* ReplaceAddress(uint64_t& place, void* function) {
  DWORD protection = 0;
  VirtualProtect(&place, sizeof(place), PAGE_READWRITE, &protection);
  void* const before =
      std::bit_cast<void*>(std::exchange(place, std::bit_cast<uint64_t>(function)));
  VirtualProtect(&place, sizeof(place), protection, &protection);
  return before;
}

}  // namespace dozewell::support
