#include <windows.h>

#include "setup/local_memory.h"

namespace dozewell::setup {

void LocalMemoryFreer::operator()(void* memory) const { LocalFree(memory); }

}  // namespace dozewell::setup
