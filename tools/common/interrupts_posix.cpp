#include <signal.h>

#include "common/interrupts.h"

namespace dozewell {
namespace {

int held = 0;
sigset_t before;

}  // namespace

HeldInterrupts::HeldInterrupts() {
  if (held++ > 0) return;
  sigset_t all;
  sigfillset(&all);
  sigprocmask(SIG_BLOCK, &all, &before);
}

HeldInterrupts::~HeldInterrupts() {
  if (--held == 0) sigprocmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace dozewell
