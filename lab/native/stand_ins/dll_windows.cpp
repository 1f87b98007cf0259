#include <windows.h>

#include "stand_ins/import.h"
#include "stand_ins/service_record.h"

namespace dozewell::lab {
namespace {

FARPROC WINAPI LookUp(HMODULE library, const char* name);

const Import<decltype(GetProcAddress)> LookUpImport(SystemCallPlace("GetProcAddress"), LookUp);

// A program that looks a function up gets the same one as if it had imported it.
FARPROC WINAPI LookUp(HMODULE library, const char* name) {
  static_cast<void>(LookUpImport.CountCall());
  const FARPROC system = LookUpImport.System(library, name);
  const bool byOrdinal = reinterpret_cast<ULONG_PTR>(name) <= 0xFFFF;
  if (system == nullptr || byOrdinal) return system;
  void* const standIn = ImportedFunction::StandInFor(name, reinterpret_cast<void*>(system));
  return standIn == nullptr ? system : reinterpret_cast<FARPROC>(standIn);
}

// Runs before the program's entry point, since the program imports this library.
bool Enter() {
  Machine = MapMachineState();
  if (Machine == nullptr) return false;
  ImportedFunction::ReplaceAll(GetModuleHandleW(nullptr));
  return true;
}

}  // namespace
}  // namespace dozewell::lab

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  return reason != DLL_PROCESS_ATTACH || dozewell::lab::Enter();
}
