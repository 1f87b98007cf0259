#include <windows.h>

#include <bit>
#include <cstdint>
#include <string>

#include "stand_ins/import.h"
#include "stand_ins/service_record.h"
#include "support/program_imports.h"

namespace dozewell::lab {

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
  support::VisitImports(program, [](const char* name, uint64_t& address) {
    if (void* const standIn = StandInFor(name, std::bit_cast<void*>(address)))
      support::ReplaceAddress(address, standIn);
  });
}

void* ImportedFunction::StandInFor(std::string_view name, void* system) {
  ImportedFunction* const function = Find(name);
  if (function == nullptr) return nullptr;
  function->system_ = system;
  return function->standIn_;
}

}  // namespace dozewell::lab
