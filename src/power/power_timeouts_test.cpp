#include "power/power_timeouts.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fakes/power_fake.h"
#include "support/calls.h"

namespace dozewell {
namespace {

constexpr uint32_t kAll = 0x1F;
constexpr PowerTimeouts kUntouched = {91, 92, 93, 94, 95};
const char* const kNames[] = {"display", "sleep", "hibernate", "wake timers", "hybrid sleep"};

// A scheme with 600, 1200, 1800, 1 and 0 for AC, 300, 600, 900, 2 and 1 for DC.
void ResetPower() {
  fakes::power = {};
  const uint32_t onAC[] = {600, 1200, 1800, 1, 0};
  const uint32_t onDC[] = {300, 600, 900, 2, 1};
  for (size_t i = 0; i < 5; ++i) {
    fakes::power.values[std::string("balanced AC ") + kNames[i]] = onAC[i];
    fakes::power.values[std::string("balanced DC ") + kNames[i]] = onDC[i];
  }
}

std::vector<uint32_t> Fields(const PowerTimeouts& timeouts) {
  return {timeouts.displayOff, timeouts.sleepAfter, timeouts.hibernateAfter,
          timeouts.allowWakeTimers, timeouts.allowHybridSleep};
}

}  // namespace

TEST_CASE("all settings of a source are read in order, timeouts in minutes, the rest as stored") {
  ResetPower();
  PowerTimeouts timeouts = kUntouched;
  CHECK(ReadPowerTimeouts(kAll, kPowerSourceAC, fakes::kBalanced, &timeouts) == kAll);
  CHECK(timeouts == PowerTimeouts{10, 20, 30, 1, 0});
  CHECK(ReadPowerTimeouts(kAll, kPowerSourceDC, fakes::kBalanced, &timeouts) == kAll);
  CHECK(timeouts == PowerTimeouts{5, 10, 15, 2, 1});
  CHECK(fakes::power.calls ==
        Calls{"read balanced AC display", "read balanced AC sleep", "read balanced AC hibernate",
              "read balanced AC wake timers", "read balanced AC hybrid sleep",
              "read balanced DC display", "read balanced DC sleep", "read balanced DC hibernate",
              "read balanced DC wake timers", "read balanced DC hybrid sleep"});
}

TEST_CASE("all settings of a source are written in order, and the scheme is applied once") {
  fakes::power = {};
  const PowerTimeouts onAC = {10, 20, 30, 1, 0};
  const PowerTimeouts onDC = {0, 6, 7, 0xFFFFFFFF, 3};
  CHECK(WritePowerTimeouts(kAll, kPowerSourceAC, fakes::kBalanced, &onAC) == kAll);
  CHECK(WritePowerTimeouts(kAll, kPowerSourceDC, fakes::kBalanced, &onDC) == kAll);
  CHECK(fakes::power.calls ==
        Calls{"write balanced AC display 600", "write balanced AC sleep 1200",
              "write balanced AC hibernate 1800", "write balanced AC wake timers 1",
              "write balanced AC hybrid sleep 0", "activate balanced",
              "write balanced DC display 0", "write balanced DC sleep 360",
              "write balanced DC hibernate 420", "write balanced DC wake timers 4294967295",
              "write balanced DC hybrid sleep 3", "activate balanced"});
}

TEST_CASE("each combination of mask bits reads and writes those settings alone") {
  for (uint32_t mask = 0; mask <= kAll; ++mask) {
    CAPTURE(mask);
    ResetPower();
    PowerTimeouts timeouts = kUntouched;
    CHECK(ReadPowerTimeouts(mask, kPowerSourceAC, fakes::kBalanced, &timeouts) == mask);
    const std::vector<uint32_t> read = {10, 20, 30, 1, 0};
    const std::vector<uint32_t> untouched = Fields(kUntouched);
    Calls calls;
    for (size_t i = 0; i < 5; ++i) {
      const bool selected = (mask >> i & 1) != 0;
      CHECK(Fields(timeouts)[i] == (selected ? read[i] : untouched[i]));
      if (selected) calls.push_back(std::string("read balanced AC ") + kNames[i]);
    }
    CHECK(fakes::power.calls == calls);

    fakes::power = {};
    const uint32_t raw[] = {91 * 60, 92 * 60, 93 * 60, 94, 95};
    CHECK(WritePowerTimeouts(mask, kPowerSourceDC, fakes::kBalanced, &kUntouched) == mask);
    calls.clear();
    for (size_t i = 0; i < 5; ++i) {
      if ((mask >> i & 1) == 0) continue;
      calls.push_back(std::string("write balanced DC ") + kNames[i] + " " + std::to_string(raw[i]));
    }
    if (mask != 0) calls.emplace_back("activate balanced");
    CHECK(fakes::power.calls == calls);
  }
}

TEST_CASE("the named mask bits select the settings they name") {
  CHECK(kDisplayOff == 0x01);
  CHECK(kSleepAfter == 0x02);
  CHECK(kHibernateAfter == 0x04);
  CHECK(kAllowWakeTimers == 0x08);
  CHECK(kAllowHybridSleep == 0x10);
}

TEST_CASE("mask bits without a setting select nothing and are not in the result") {
  ResetPower();
  PowerTimeouts timeouts = kUntouched;
  CHECK(ReadPowerTimeouts(0xFFFFFFE0, kPowerSourceAC, fakes::kBalanced, &timeouts) == 0);
  CHECK(WritePowerTimeouts(0xFFFFFFE0, kPowerSourceAC, fakes::kBalanced, &timeouts) == 0);
  CHECK(timeouts == kUntouched);
  CHECK(fakes::power.calls == Calls{});
  CHECK(ReadPowerTimeouts(0xFFFFFFFF, kPowerSourceAC, fakes::kBalanced, &timeouts) == kAll);
}

TEST_CASE("119 seconds read as 1 minute, which is written back as 60 seconds") {
  fakes::power = {};
  fakes::power.values["balanced AC hibernate"] = 119;
  PowerTimeouts timeouts = kUntouched;
  CHECK(ReadPowerTimeouts(kHibernateAfter, kPowerSourceAC, fakes::kBalanced, &timeouts) == 0x04);
  CHECK(timeouts.hibernateAfter == 1);
  CHECK(WritePowerTimeouts(kHibernateAfter, kPowerSourceAC, fakes::kBalanced, &timeouts) == 0x04);
  CHECK(fakes::power.values["balanced AC hibernate"] == 60);
}

TEST_CASE("only whole minutes are read") {
  struct Row {
    uint32_t seconds;
    uint32_t minutes;
  };
  for (const Row& row :
       {Row{0, 0}, Row{59, 0}, Row{60, 1}, Row{120, 2}, Row{0xFFFFFFFF, 71582788}}) {
    for (const uint32_t bit : {kDisplayOff, kSleepAfter, kHibernateAfter}) {
      fakes::power = {};
      fakes::power.values["balanced DC display"] = row.seconds;
      fakes::power.values["balanced DC sleep"] = row.seconds;
      fakes::power.values["balanced DC hibernate"] = row.seconds;
      PowerTimeouts timeouts = {};
      CHECK(ReadPowerTimeouts(bit, kPowerSourceDC, fakes::kBalanced, &timeouts) == bit);
      CHECK(timeouts.displayOff + timeouts.sleepAfter + timeouts.hibernateAfter == row.minutes);
    }
  }
}

TEST_CASE("seconds of more than 32 bits wrap when they are written") {
  fakes::power = {};
  const PowerTimeouts timeouts = {0, 0, 71582789, 0, 0};
  CHECK(WritePowerTimeouts(kHibernateAfter, kPowerSourceAC, fakes::kBalanced, &timeouts) == 0x04);
  CHECK(fakes::power.values["balanced AC hibernate"] == 44);
}

TEST_CASE("a source that is neither AC nor DC selects nothing, and no scheme is applied") {
  for (const uint32_t source : {uint32_t{2}, uint32_t{255}, uint32_t{0xFFFFFFFF}}) {
    ResetPower();
    PowerTimeouts timeouts = kUntouched;
    CHECK(ReadPowerTimeouts(kAll, source, fakes::kBalanced, &timeouts) == 0);
    CHECK(timeouts == kUntouched);
    CHECK(WritePowerTimeouts(kAll, source, fakes::kBalanced, &timeouts) == 0);
    CHECK(fakes::power.calls == Calls{});
  }
}

TEST_CASE("a null record is neither read nor written") {
  ResetPower();
  CHECK(ReadPowerTimeouts(kAll, kPowerSourceAC, fakes::kBalanced, nullptr) == 0);
  CHECK(WritePowerTimeouts(kAll, kPowerSourceAC, fakes::kBalanced, nullptr) == 0);
  CHECK(fakes::power.calls == Calls{});
}

TEST_CASE("a setting that cannot be read is missing from the result, its field untouched") {
  for (int failing = 1; failing <= 5; ++failing) {
    CAPTURE(failing);
    ResetPower();
    fakes::power.failer.firstFailing = failing;
    PowerTimeouts timeouts = kUntouched;
    const size_t missing = static_cast<size_t>(failing - 1);
    CHECK(ReadPowerTimeouts(kAll, kPowerSourceAC, fakes::kBalanced, &timeouts) ==
          (kAll & ~(uint32_t{1} << missing)));
    std::vector<uint32_t> expected = {10, 20, 30, 1, 0};
    expected[missing] = Fields(kUntouched)[missing];
    CHECK(Fields(timeouts) == expected);
    CHECK(fakes::power.calls.size() == 5);
  }
}

TEST_CASE("a setting that cannot be written is missing from the result, and the rest is applied") {
  for (int failing = 1; failing <= 5; ++failing) {
    CAPTURE(failing);
    fakes::power = {};
    fakes::power.failer.firstFailing = failing;
    const uint32_t missing = uint32_t{1} << (failing - 1);
    CHECK(WritePowerTimeouts(kAll, kPowerSourceAC, fakes::kBalanced, &kUntouched) ==
          (kAll & ~missing));
    CHECK(fakes::power.values.size() == 4);
    CHECK(fakes::power.calls.size() == 6);
    CHECK(fakes::power.calls.back() == "activate balanced");
  }
}

TEST_CASE("the scheme is not applied when no selected setting was written") {
  fakes::power = {};
  fakes::power.failer = {.firstFailing = 1, .failures = 5};
  CHECK(WritePowerTimeouts(kAll, kPowerSourceAC, fakes::kBalanced, &kUntouched) == 0);
  CHECK(fakes::power.calls.size() == 5);
  CHECK(fakes::power.values.empty());
}

TEST_CASE("settings count as written when applying the scheme fails") {
  fakes::power = {};
  fakes::power.failer.firstFailing = 2;
  CHECK(WritePowerTimeouts(kSleepAfter, kPowerSourceDC, fakes::kBalanced, &kUntouched) == 0x02);
  CHECK(fakes::power.calls == Calls{"write balanced DC sleep 5520", "activate balanced"});
}

TEST_CASE("the scheme that is read, written and applied is the one that is given") {
  fakes::power = {};
  fakes::power.values["power saver AC hibernate"] = 240;
  const Guid powerSaver = {
      0xA1841308, 0x3541, 0x4FAB, {0xBC, 0x81, 0xF7, 0x15, 0x56, 0xF2, 0x0B, 0x4A}};
  PowerTimeouts timeouts = kUntouched;
  CHECK(ReadPowerTimeouts(kHibernateAfter, kPowerSourceAC, powerSaver, &timeouts) == 0x04);
  CHECK(timeouts.hibernateAfter == 4);
  CHECK(WritePowerTimeouts(kHibernateAfter, kPowerSourceAC, powerSaver, &timeouts) == 0x04);
  CHECK(fakes::power.calls == Calls{"read power saver AC hibernate",
                                    "write power saver AC hibernate 240", "activate power saver"});
  CHECK(fakes::power.activeScheme == powerSaver);
}

}  // namespace dozewell
