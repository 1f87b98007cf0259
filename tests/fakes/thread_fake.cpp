#include "fakes/thread_fake.h"

#include <utility>

#include "base/thread.h"

namespace dozewell {

fakes::Threads fakes::threads;

void fakes::Threads::Run() {
  for (void (*const procedure)() : std::exchange(waiting, {})) procedure();
}

bool StartThread(void (*procedure)()) {
  if (fakes::threads.failer.Fails()) return false;
  fakes::threads.waiting.push_back(procedure);
  return true;
}

}  // namespace dozewell
