#include "rpc/procedures.h"

#include <doctest/doctest.h>

#include <cstdint>

#include "fakes/power_fake.h"
#include "fakes/served_machine.h"
#include "fakes/settings_fake.h"

namespace dozewell {
namespace {

using fakes::Answer;
using fakes::Ask;
using fakes::kRefusedUnasked;
using fakes::ServedMachine;

}  // namespace

TEST_CASE("a ping is answered without asking the machine for anything") {
  const ServedMachine machine;
  CHECK(Ask(Ping) == Answer{true, {}});
}

TEST_CASE("a null output refuses every reading procedure") {
  const ServedMachine machine;
  fakes::power.values = {{"balanced AC display", 600}};
  fakes::settings.current.values[L"EnableZ7Feature"] = fakes::Number32(1);
  CHECK_FALSE(GetDriverEnabled(nullptr));
  CHECK_FALSE(GetFeatureEnabled(nullptr));
  CHECK_FALSE(GetWakeTime(0, nullptr));
  CHECK_FALSE(GetWakeRaw(1, nullptr));
  CHECK_FALSE(GetPowerSettings(0x01, 0, nullptr));
  CHECK_FALSE(GetActiveScheme(nullptr));
  CHECK_FALSE(GetStrength(nullptr));
}

TEST_CASE("a null block of values refuses the procedures that take one, unasked") {
  const ServedMachine machine;
  CHECK(Ask([] { return SetWakeTime(0, nullptr); }) == kRefusedUnasked);
  CHECK(Ask([] { return SetPowerSettings(0x1F, 0, nullptr); }) == kRefusedUnasked);
}

TEST_CASE("no refusal is reported to the event log") {
  const fakes::Machine machine;
  fakes::power.failer = {.firstFailing = 1, .failures = 1000};
  fakes::settings.failer = {.firstFailing = 1, .failures = 1000};
  PowerTimeouts settings = {};
  WakeTime time = {};
  bool flag = false;
  int32_t number = 0;
  uint32_t scheme = 0;
  fakes::TakeJournal();
  CHECK_FALSE(GetDriverEnabled(&flag));
  CHECK_FALSE(SetFeatureEnabled(true));
  CHECK_FALSE(SetFeatureEnabled(false));
  CHECK_FALSE(GetFeatureEnabled(&flag));
  CHECK_FALSE(SetWakeTime(0, &time));
  CHECK_FALSE(SetWakeRaw(0, 1));
  CHECK_FALSE(GetWakeTime(0, &time));
  CHECK_FALSE(GetWakeRaw(0, &number));
  CHECK_FALSE(GetPowerSettings(0x1F, 0, &settings));
  CHECK_FALSE(SetPowerSettings(0x1F, 0, &settings));
  CHECK_FALSE(GetActiveScheme(&scheme));
  CHECK_FALSE(SetActiveScheme(0));
  CHECK_FALSE(ResetHistory());
  CHECK_FALSE(SetStrength(1));
  for (const std::string& call : fakes::TakeJournal()) {
    CHECK_FALSE(call.starts_with("report "));
    CHECK_FALSE(call.starts_with("trace "));
  }
}

}  // namespace dozewell
