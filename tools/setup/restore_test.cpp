#include "setup/restore.h"

#include <doctest/doctest.h>

#include <map>
#include <string>
#include <vector>

#include "fakes/driver_fake.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "support/calls.h"

namespace dozewell::setup {
namespace {

using fakes::driver;
using fakes::power;
using fakes::settings;

// A machine that sleeps on a predicted timeout, with its wake timer armed.
class SleepingMachine {
 public:
  SleepingMachine() {
    fakes::ResetDriver();
    fakes::ResetSettings();
    power = {};
    power.values = {{"balanced AC hibernate", 600}, {"balanced DC hibernate", 600}};
    settings.current.values = {{L"HA_AC", fakes::Number32(180)}, {L"HA_DC", fakes::Number32(0)}};
    driver.timer = {{0x00654321, 0x9800012C}};
  }
};

}  // namespace

TEST_CASE("restoring gives back the user's timeouts and switches the wake timers off") {
  const SleepingMachine machine;
  RestoreMachine();
  CHECK(power.values == std::map<std::string, uint32_t>{{"balanced AC hibernate", 10800},
                                                        {"balanced DC hibernate", 0}});
  CHECK_FALSE(settings.current.Exists());
  CHECK(driver.calls == Calls{"open", "read timer", "write timer 00654321 1800012c", "close"});
}

TEST_CASE("restoring switches off a wake timer of either kind") {
  const SleepingMachine machine;
  driver.timer = {{0x80000001, 0x00000002}};
  RestoreMachine();
  CHECK(driver.timer == TimerRecord{{0x00000001, 0x00000002}});
}

TEST_CASE("restoring a machine that is as its user had it changes nothing") {
  const SleepingMachine machine;
  settings.current.values.clear();
  driver.timer = {{0x00000001, 0x40000002}};
  RestoreMachine();
  CHECK(power.calls.empty());
  CHECK(driver.calls == Calls{"open", "read timer", "close"});
}

TEST_CASE("restoring works without the driver's device") {
  const SleepingMachine machine;
  driver.present = false;
  RestoreMachine();
  CHECK(power.values.at("balanced AC hibernate") == 10800);
  CHECK(driver.calls == Calls{"open"});
}

TEST_CASE("a driver that cannot tell or does not switch its timers off is reported") {
  for (const int call : {1, 2}) {
    const SleepingMachine machine;
    driver.failer.firstFailing = call;
    CHECK_THROWS_WITH(RestoreMachine(), "the driver's wake timers could not be switched off");
    CHECK(power.values.at("balanced AC hibernate") == 10800);
    CHECK(driver.calls.back() == "close");
  }
}

}  // namespace dozewell::setup
