#include "service/service_status.h"

#include <doctest/doctest.h>

#include <string>

#include "fakes/journal.h"
#include "fakes/lock_fake.h"
#include "fakes/machine.h"
#include "fakes/service_fake.h"
#include "service/service_host.h"
#include "support/calls.h"

namespace dozewell {
namespace {

constexpr const wchar_t* kFailure = L"it failed, %d";

Calls Sent() {
  fakes::TakeJournal();
  ReportServiceStatus(kFailure);
  return fakes::TakeJournal();
}

}  // namespace

TEST_CASE("a state is sent with its wait hint, which a later state keeps") {
  const fakes::Machine machine;
  fakes::service.registered = true;
  SetServiceState(kServiceStopPending, 3000);
  CHECK(fakes::TakeJournal() == Calls{});
  CHECK(Sent() == Calls{"service: status 3 3000"});
  SetServiceState(kServicePaused);
  CHECK(Sent() == Calls{"service: status 7 3000"});
  SetServiceState(kServiceRunning, 0);
  CHECK(Sent() == Calls{"service: status 4 0"});
}

TEST_CASE("a status is sent under the lock under which it changes") {
  const fakes::Machine machine;
  bool taken = false;
  fakes::service.whileSendingStatus = [&] { taken = fakes::IsTaken(StatusLock); };
  Sent();
  CHECK(taken);
  CHECK_FALSE(fakes::IsTaken(StatusLock));
}

TEST_CASE("a status that cannot be sent is reported with the error's code") {
  const fakes::Machine machine;
  SetServiceState(kServiceRunning, 0);
  CHECK(Sent() == Calls{"service: status 4 0", "report 1 it failed, 6"});
  fakes::service.registered = true;
  fakes::service.failer = {.firstFailing = 1, .failures = 1, .calls = 0};
  fakes::service.error = 1460;
  CHECK(Sent() == Calls{"service: status 4 0", "report 1 it failed, 1460"});
  CHECK(Sent() == Calls{"service: status 4 0"});
}

}  // namespace dozewell
