#include <doctest/doctest.h>
#include <signal.h>

#include "common/interrupts.h"

namespace dozewell {
namespace {

volatile sig_atomic_t caught = 0;

void Catch(int) { caught = caught + 1; }

}  // namespace

TEST_CASE("what ends the program waits until it may") {
  for (const int request : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
    struct sigaction action = {};
    struct sigaction before = {};
    action.sa_handler = Catch;
    REQUIRE(sigaction(request, &action, &before) == 0);
    caught = 0;
    {
      const HeldInterrupts outer;
      {
        const HeldInterrupts inner;
        raise(request);
        CHECK(caught == 0);
      }
      CHECK(caught == 0);
    }
    CHECK(caught == 1);
    raise(request);
    CHECK(caught == 2);
    sigaction(request, &before, nullptr);
  }
}

}  // namespace dozewell
