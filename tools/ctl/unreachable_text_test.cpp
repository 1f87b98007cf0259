#include "ctl/unreachable_text.h"

#include <doctest/doctest.h>

#include "ctl/fakes/client_fake.h"
#include "service/service_host.h"

namespace dozewell::ctl {

using fakes::kServerUnavailable;

TEST_CASE("a service that does not answer is described by its state, with what to do") {
  const auto text = [](ServiceQuery service) {
    return UnreachableText(kServerUnavailable, service);
  };
  CHECK(text({1060, 0}) == "the service is not installed; its installer package installs it");
  CHECK(text({0, kServiceStopped}) ==
        "the service is stopped; as administrator, net start DozewellService starts it");
  CHECK(text({0, kServiceStopped, 0, true}) ==
        "the service is still to start after the start of Windows; it does so by itself within "
        "some minutes, so do not start it by hand");
  CHECK(text({0, kServiceStartPending}) == "the service is starting; try again in a moment");
  CHECK(text({0, kServiceStopPending}) ==
        "the service is stopping; once it has, net start DozewellService starts it again");
  CHECK(text({0, kServiceRunning}) ==
        "the service runs but does not answer (error 1722); its events may say why (dozewellctl "
        "status), and net stop and net start DozewellService restart it");
  CHECK(text({5, 0}) ==
        "the service does not answer (error 1722); its events may say why (dozewellctl status), "
        "and net stop and net start DozewellService restart it");
}

TEST_CASE("the error of the call comes before the service's state") {
  const ServiceQuery running = {0, kServiceRunning};
  CHECK(UnreachableText(5, running) ==
        "the service does not let you in (error 5); try it as administrator");
  CHECK(UnreachableText(1723, running) ==
        "the service is too busy (error 1723); try again in a moment");
  CHECK(UnreachableText(1723, {1060, 0}) ==
        "the service is too busy (error 1723); try again in a moment");
  CHECK(UnreachableText(1723, {0, kServiceStopPending}) ==
        "the service is stopping; once it has, net start DozewellService starts it again");
  CHECK(UnreachableText(1726, {1060, 0}) ==
        "the service went away during the call (error 1726), which it may or may not have carried "
        "out; dozewellctl status shows which");
}

TEST_CASE("the service's state has a word") {
  CHECK(ServiceStateText({0, kServiceRunning}) == "running");
  CHECK(ServiceStateText({0, kServicePaused}) == "paused, which changes nothing of what it does");
  CHECK(ServiceStateText({0, kServiceStopped}) == "stopped");
  CHECK(ServiceStateText({0, kServiceStartPending}) == "starting");
  CHECK(ServiceStateText({0, kServiceStopPending}) == "stopping");
  CHECK(ServiceStateText({0, 6}) == "state 6");
  CHECK(ServiceStateText({1060, 0}) == "not installed");
  CHECK(ServiceStateText({5, 0}) == "not known (error 5)");
}

}  // namespace dozewell::ctl
