#ifndef DOZEWELL_SETUP_LOCAL_MEMORY_H_
#define DOZEWELL_SETUP_LOCAL_MEMORY_H_

#include <memory>

namespace dozewell::setup {

struct LocalMemoryFreer {
  void operator()(void* memory) const;
};
// Owns memory of Windows that LocalFree frees.
using LocalMemory = std::unique_ptr<void, LocalMemoryFreer>;

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_LOCAL_MEMORY_H_
