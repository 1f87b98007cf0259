#include "fakes/thread_fake.h"

#include <utility>

#include "base/thread.h"
#include "fakes/journal.h"

namespace dozewell {

fakes::Threads fakes::threads;

void fakes::Threads::Run() {
  for (void (*const procedure)() : std::exchange(waiting, {})) procedure();
}

bool StartThread(void (*procedure)()) {
  fakes::journal.emplace_back("thread: start");
  if (fakes::threads.failer.Fails()) return false;
  if (fakes::threads.atOnce) {
    procedure();
  } else {
    fakes::threads.waiting.push_back(procedure);
  }
  return true;
}

}  // namespace dozewell
