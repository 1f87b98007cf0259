#include "ctl/check/try_timeouts.h"

#include <doctest/doctest.h>

#include <functional>

#include "fakes/client_machine.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "support/calls.h"

namespace dozewell::ctl {
namespace {

using fakes::ClientMachine;
using fakes::power;
using fakes::settings;

void ProvisionTimeouts() {
  // Seconds that make no whole minute are written back too.
  power.values["balanced AC hibernate"] = 10801;
  power.values["balanced DC hibernate"] = 0;
}

// The steps, with a clock on which each of them takes a quarter of a second.
TriedTimeouts Try() {
  double now = 0;
  return TryTimeouts([&now] { return now += 250; });
}

Calls Writes() {
  Calls writes;
  for (const std::string& call : power.calls) {
    if (!call.starts_with("read") && call != "get active") writes.push_back(call);
  }
  return writes;
}

// Has something happen at the n-th call of the power scheme, by a clock that is read around each
// step.
TriedTimeouts TryWhile(int atReading, const std::function<void()>& happen) {
  int reading = 0;
  return TryTimeouts([&] {
    if (++reading == atReading) happen();
    return 0.0;
  });
}

}  // namespace

TEST_CASE("each timeout is read and written back as it is, in the service's order") {
  const ClientMachine machine;
  ProvisionTimeouts();
  const TriedTimeouts tried = Try();
  CHECK(tried.IsDone());
  CHECK(Writes() == Calls{"write balanced AC hibernate 10801", "activate balanced",
                          "write balanced DC hibernate 0", "activate balanced"});
  REQUIRE(tried.steps.size() == 7);
  CHECK(tried.steps[0].name == "read which scheme is active");
  CHECK(tried.steps[3].name == "write the timeout on mains");
  CHECK(tried.steps[3].milliseconds == 250);
  CHECK(tried.Milliseconds() == 1750);
}

TEST_CASE("nothing is written while a user's timeout is cached") {
  for (const wchar_t* name : {L"HA_AC", L"HA_DC"}) {
    const ClientMachine machine;
    ProvisionTimeouts();
    settings.current.values[name] = fakes::Number32(60);
    const TriedTimeouts tried = Try();
    CHECK_FALSE(tried.IsDone());
    CHECK(tried.refusal.ends_with(" is cached: a predicted timeout is in force"));
    CHECK(Writes() == Calls{});
  }
}

TEST_CASE("nothing is written that could not be read") {
  const ClientMachine machine;
  ProvisionTimeouts();
  power.values.erase("balanced DC hibernate");
  const TriedTimeouts tried = Try();
  CHECK_FALSE(tried.IsDone());
  CHECK(tried.refusal == "not everything could be read");
  CHECK(Writes() == Calls{});
  CHECK_FALSE(tried.steps.back().isDone);
}

TEST_CASE("nothing more is written once something has changed") {
  // The clock is read before and after each of the three steps that read, then around a write.
  constexpr int kAfterReading = 6;
  constexpr int kAfterFirstWrite = 10;
  {
    const ClientMachine machine;
    ProvisionTimeouts();
    CHECK(TryWhile(kAfterReading, [] { power.values["balanced AC hibernate"] = 60; }).refusal ==
          "the timeout on mains has changed");
    CHECK(Writes() == Calls{});
  }
  {
    const ClientMachine machine;
    ProvisionTimeouts();
    CHECK(TryWhile(kAfterReading, [] { power.activeScheme.data1 = 1; }).refusal ==
          "the active scheme has changed");
    CHECK(Writes() == Calls{});
  }
  {
    const ClientMachine machine;
    ProvisionTimeouts();
    CHECK(TryWhile(kAfterFirstWrite, [] {
            settings.current.values[L"HA_AC"] = fakes::Number32(60);
          }).refusal == "HA_AC is cached: a predicted timeout is in force");
    CHECK(Writes() == Calls{"write balanced AC hibernate 10801", "activate balanced"});
  }
}

TEST_CASE("a step that fails is told") {
  const ClientMachine machine;
  ProvisionTimeouts();
  // Three calls read, two look whether all is as it was, and then the write comes.
  power.failer.firstFailing = 6;
  const TriedTimeouts tried = Try();
  CHECK_FALSE(tried.IsDone());
  CHECK(tried.refusal.empty());
  CHECK_FALSE(tried.steps[3].isDone);
  CHECK(tried.steps[4].isDone);
}

}  // namespace dozewell::ctl
