#ifndef DOZEWELL_TESTS_SUPPORT_PROGRAM_IMPORTS_H_
#define DOZEWELL_TESTS_SUPPORT_PROGRAM_IMPORTS_H_

#include <cstdint>
#include <functional>

namespace dozewell::support {

// Called with the name of an imported function and the place of its address.
using ImportVisitor = std::function<void(const char* name, uint64_t& address)>;

// Visits each function that a loaded program, given by where it begins, imports by name.
void VisitImports(void* program, const ImportVisitor& visit);

// Puts another function into a place of an import table, which is otherwise read-only, and returns
// the one that was there.
void* ReplaceAddress(uint64_t& place, void* function);

}  // namespace dozewell::support

#endif  // DOZEWELL_TESTS_SUPPORT_PROGRAM_IMPORTS_H_
