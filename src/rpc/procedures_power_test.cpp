// The active power scheme and its settings.

#include <doctest/doctest.h>

#include <cstdint>
#include <string>

#include "fakes/power_fake.h"
#include "fakes/served_machine.h"
#include "power/power_timeouts.h"
#include "rpc/procedures.h"

namespace dozewell {
namespace {

using fakes::Answer;
using fakes::Ask;
using fakes::kRefusedUnasked;
using fakes::ServedMachine;

const Calls kSchemeAsked = {"power: get active"};

constexpr PowerTimeouts kUntouched = {91, 92, 93, 94, 95};

void ProvisionScheme() {
  fakes::power.values = {
      {"balanced AC display", 600},    {"balanced AC sleep", 1259},
      {"balanced AC hibernate", 1800}, {"balanced AC wake timers", 2},
      {"balanced AC hybrid sleep", 1}, {"balanced DC display", 119},
      {"balanced DC sleep", 59},       {"balanced DC hibernate", 0xFFFFFFFF},
      {"balanced DC wake timers", 0},  {"balanced DC hybrid sleep", 0xFFFFFFFF},
  };
}

// The calls for the five settings of a source, each after a verb.
Calls ForEachSetting(const std::string& verbAndSource) {
  Calls calls;
  for (const char* setting : {"display", "sleep", "hibernate", "wake timers", "hybrid sleep"}) {
    calls.push_back("power: " + verbAndSource + " " + setting);
  }
  return calls;
}

constexpr Guid kPowerSaver = {
    0xA1841308, 0x3541, 0x4FAB, {0xBC, 0x81, 0xF7, 0x15, 0x56, 0xF2, 0x0B, 0x4A}};
constexpr Guid kHighPerformance = {
    0x8C5E7FDA, 0xE8BF, 0x4A96, {0x9A, 0x85, 0xA6, 0xE2, 0x3A, 0x8C, 0x63, 0x5C}};
constexpr Guid kOwnScheme = {
    0x381B4222, 0xF694, 0x41F0, {0x96, 0x85, 0xFF, 0x5B, 0xB2, 0x60, 0, 0}};

}  // namespace

TEST_CASE("all settings of the active scheme are read for one source, timeouts in whole minutes") {
  const ServedMachine machine;
  ProvisionScheme();
  PowerTimeouts settings = kUntouched;
  CHECK(Ask([&] { return GetPowerSettings(0x1F, 0, &settings); }) ==
        Answer{true, Joined({kSchemeAsked, ForEachSetting("read balanced AC")})});
  CHECK(settings == PowerTimeouts{10, 20, 30, 2, 1});
  CHECK(Ask([&] { return GetPowerSettings(0x1F, 1, &settings); }) ==
        Answer{true, Joined({kSchemeAsked, ForEachSetting("read balanced DC")})});
  CHECK(settings == PowerTimeouts{1, 0, 71582788, 0, 0xFFFFFFFF});
}

TEST_CASE("each bit of the mask reads its own setting, and the others are 0") {
  const ServedMachine machine;
  ProvisionScheme();
  struct Row {
    uint32_t mask;
    const char* call;
    PowerTimeouts settings;
  };
  const Row rows[] = {
      {0x01, "power: read balanced AC display", {10, 0, 0, 0, 0}},
      {0x02, "power: read balanced AC sleep", {0, 20, 0, 0, 0}},
      {0x04, "power: read balanced AC hibernate", {0, 0, 30, 0, 0}},
      {0x08, "power: read balanced AC wake timers", {0, 0, 0, 2, 0}},
      {0x10, "power: read balanced AC hybrid sleep", {0, 0, 0, 0, 1}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.mask);
    PowerTimeouts settings = kUntouched;
    CHECK(Ask([&] { return GetPowerSettings(row.mask, 0, &settings); }) ==
          Answer{true, Joined({kSchemeAsked, {row.call}})});
    CHECK(settings == row.settings);
  }
}

TEST_CASE("settings are written to the active scheme, which is then applied again") {
  const ServedMachine machine;
  const PowerTimeouts settings = {1, 2, 0, 7, 0xFFFFFFFF};
  CHECK(Ask([&] { return SetPowerSettings(0x1F, 0, &settings); }) ==
        Answer{true,
               {"power: get active", "power: write balanced AC display 60",
                "power: write balanced AC sleep 120", "power: write balanced AC hibernate 0",
                "power: write balanced AC wake timers 7",
                "power: write balanced AC hybrid sleep 4294967295", "power: activate balanced"}});
  fakes::power.activeScheme = kPowerSaver;
  CHECK(Ask([&] { return SetPowerSettings(0x12, 1, &settings); }) ==
        Answer{true,
               {"power: get active", "power: write power saver DC sleep 120",
                "power: write power saver DC hybrid sleep 4294967295",
                "power: activate power saver"}});
}

TEST_CASE("timeouts from the wire that exceed a scheme's seconds wrap and are written") {
  const ServedMachine machine;
  const PowerTimeouts settings = {0xFFFFFFFF, 0x80000000, 71582789, 0, 0};
  CHECK(Ask([&] { return SetPowerSettings(0x07, 0, &settings); }) ==
        Answer{true,
               {"power: get active", "power: write balanced AC display 4294967236",
                "power: write balanced AC sleep 0", "power: write balanced AC hibernate 44",
                "power: activate balanced"}});
}

TEST_CASE("an empty mask, no source and numbers beyond an enumeration are refused unasked") {
  const ServedMachine machine;
  ProvisionScheme();
  PowerTimeouts settings = kUntouched;
  const auto checkRefused = [&](uint32_t mask, uint32_t source) {
    CAPTURE(mask);
    CAPTURE(source);
    CHECK(Ask([&] { return GetPowerSettings(mask, source, &settings); }) == kRefusedUnasked);
    CHECK(Ask([&] { return SetPowerSettings(mask, source, &settings); }) == kRefusedUnasked);
  };
  checkRefused(0, 0);
  checkRefused(0, 1);
  checkRefused(0x1F, 0xFFFFFFFF);
  for (const uint32_t beyond : fakes::kBeyondEnums) {
    checkRefused(beyond, 0);
    checkRefused(0x1F, beyond);
  }
  CHECK(settings == kUntouched);
}

TEST_CASE("another source reads and writes nothing and is refused") {
  const ServedMachine machine;
  ProvisionScheme();
  PowerTimeouts settings = kUntouched;
  for (const uint32_t source : {2U, 3U, fakes::kLargestEnum}) {
    CHECK(Ask([&] { return GetPowerSettings(0x1F, source, &settings); }) ==
          Answer{false, kSchemeAsked});
    CHECK(Ask([&] { return SetPowerSettings(0x1F, source, &settings); }) ==
          Answer{false, kSchemeAsked});
  }
  CHECK(settings == kUntouched);
}

TEST_CASE("bits of the mask that name no setting are refused, what the others name is done") {
  const ServedMachine machine;
  ProvisionScheme();
  PowerTimeouts settings = kUntouched;
  CHECK(Ask([&] { return GetPowerSettings(0x20, 0, &settings); }) == Answer{false, kSchemeAsked});
  CHECK(Ask([&] { return SetPowerSettings(0x20, 0, &settings); }) == Answer{false, kSchemeAsked});
  CHECK(Ask([&] { return GetPowerSettings(0x21, 0, &settings); }) ==
        Answer{false, {"power: get active", "power: read balanced AC display"}});
  CHECK(settings == kUntouched);
  CHECK(Ask([&] { return SetPowerSettings(0x7FE1, 0, &settings); }) ==
        Answer{false,
               {"power: get active", "power: write balanced AC display 5460",
                "power: activate balanced"}});
}

TEST_CASE("without an active scheme settings are neither read nor written") {
  const ServedMachine machine;
  ProvisionScheme();
  PowerTimeouts settings = kUntouched;
  fakes::power.failer = {.firstFailing = 1, .failures = 2};
  CHECK(Ask([&] { return GetPowerSettings(0x1F, 0, &settings); }) == Answer{false, kSchemeAsked});
  CHECK(Ask([&] { return SetPowerSettings(0x1F, 0, &settings); }) == Answer{false, kSchemeAsked});
  CHECK(settings == kUntouched);
}

TEST_CASE("one setting that cannot be read refuses all, and the output is left alone") {
  for (int failing = 2; failing <= 6; ++failing) {
    CAPTURE(failing);
    const ServedMachine machine;
    ProvisionScheme();
    PowerTimeouts settings = kUntouched;
    fakes::power.failer = {.firstFailing = failing};
    CHECK(Ask([&] { return GetPowerSettings(0x1F, 1, &settings); }) ==
          Answer{false, Joined({kSchemeAsked, ForEachSetting("read balanced DC")})});
    CHECK(settings == kUntouched);
  }
}

TEST_CASE("one setting that cannot be written refuses, the others are written and applied") {
  const PowerTimeouts settings = {1, 1, 1, 60, 60};
  for (int failing = 2; failing <= 6; ++failing) {
    CAPTURE(failing);
    const ServedMachine machine;
    fakes::power.values.clear();
    fakes::power.failer = {.firstFailing = failing};
    const Answer answer = Ask([&] { return SetPowerSettings(0x1F, 0, &settings); });
    CHECK_FALSE(answer.answer);
    CHECK(answer.calls.size() == 7);
    CHECK(answer.calls.back() == "power: activate balanced");
    CHECK(fakes::power.values.size() == 4);
  }
}

TEST_CASE("when no setting can be written the scheme is not applied") {
  const ServedMachine machine;
  const PowerTimeouts settings = {1, 1, 1, 1, 1};
  fakes::power.failer = {.firstFailing = 2, .failures = 2};
  CHECK(Ask([&] { return SetPowerSettings(0x03, 0, &settings); }) ==
        Answer{false,
               {"power: get active", "power: write balanced AC display 60",
                "power: write balanced AC sleep 60"}});
}

TEST_CASE("settings that were written count even when the scheme cannot be applied") {
  const ServedMachine machine;
  const PowerTimeouts settings = {1, 1, 1, 1, 1};
  fakes::power.failer = {.firstFailing = 3};
  CHECK(Ask([&] { return SetPowerSettings(0x01, 0, &settings); }) ==
        Answer{true,
               {"power: get active", "power: write balanced AC display 60",
                "power: activate balanced"}});
}

TEST_CASE("the three known schemes have the numbers 0 to 2") {
  const Guid schemes[] = {fakes::kBalanced, kPowerSaver, kHighPerformance};
  const std::string names[] = {"balanced", "power saver", "high performance"};
  for (uint32_t number = 0; number < 3; ++number) {
    const ServedMachine machine;
    uint32_t scheme = 77;
    fakes::power.activeScheme = schemes[number];
    CHECK(Ask([&] { return GetActiveScheme(&scheme); }) == Answer{true, kSchemeAsked});
    CHECK(scheme == number);
    fakes::power.activeScheme = kOwnScheme;
    CHECK(Ask([&] { return SetActiveScheme(number); }) ==
          Answer{true, {"power: activate " + names[number]}});
    CHECK(fakes::power.activeScheme == schemes[number]);
  }
}

TEST_CASE("a custom scheme has no number, nor has one that cannot be read") {
  const ServedMachine machine;
  uint32_t scheme = 77;
  fakes::power.activeScheme = kOwnScheme;
  CHECK(Ask([&] { return GetActiveScheme(&scheme); }) == Answer{false, kSchemeAsked});
  fakes::power.activeScheme = fakes::kBalanced;
  fakes::power.failer = {.firstFailing = 1};
  CHECK(Ask([&] { return GetActiveScheme(&scheme); }) == Answer{false, kSchemeAsked});
  CHECK(scheme == 77);
}

TEST_CASE("a scheme that the system does not activate is refused") {
  const ServedMachine machine;
  fakes::power.failer = {.firstFailing = 1};
  CHECK(Ask([] { return SetActiveScheme(2); }) ==
        Answer{false, {"power: activate high performance"}});
  CHECK(fakes::power.activeScheme == fakes::kBalanced);
}

TEST_CASE("a fourth scheme is refused unasked") {
  const ServedMachine machine;
  CHECK(Ask([] { return SetActiveScheme(3); }) == kRefusedUnasked);
  CHECK(Ask([] { return SetActiveScheme(fakes::kLargestEnum); }) == kRefusedUnasked);
  for (const uint32_t scheme : fakes::kBeyondEnums) {
    CAPTURE(scheme);
    CHECK(Ask([&] { return SetActiveScheme(scheme); }) == kRefusedUnasked);
  }
}

}  // namespace dozewell
