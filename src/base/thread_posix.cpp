#include <pthread.h>

#include "base/thread.h"

namespace dozewell {
namespace {

void* Run(void* procedure) {
  reinterpret_cast<void (*)()>(procedure)();
  return nullptr;
}

}  // namespace

bool StartThread(void (*procedure)()) {
  pthread_t thread = {};
  if (pthread_create(&thread, nullptr, Run, reinterpret_cast<void*>(procedure)) != 0) return false;
  pthread_detach(thread);
  return true;
}

}  // namespace dozewell
