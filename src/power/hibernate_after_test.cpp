#include "power/hibernate_after.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fakes/event_log_fake.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "power/power_scheme.h"
#include "support/calls.h"

namespace dozewell {
namespace {

// Reports of error events.
const char* const kPassedAC = "1 Failed to set passed HA value for AC";
const char* const kPassedDC = "1 Failed to set passed HA value for DC";
const char* const kCachedAC = "1 Failed to set cached HA value for AC";
const char* const kCachedDC = "1 Failed to set cached HA value for DC";

void Reset() {
  fakes::power = {};
  fakes::eventLog = {};
  fakes::ResetSettings();
}

Calls Reports() { return fakes::eventLog.After("report "); }

void CacheHA(fakes::Key& key) {
  key.values[L"HA_AC"] = fakes::Number32(30);
  key.values[L"HA_DC"] = fakes::Number32(15);
}

}  // namespace

TEST_CASE("a passed HA is set for AC and for DC, each in the scheme active then") {
  Reset();
  SetPassedHA(7);
  CHECK(fakes::power.calls == Calls{"get active", "write balanced AC hibernate 420",
                                    "activate balanced", "get active",
                                    "write balanced DC hibernate 420", "activate balanced"});
  CHECK(Reports() == Calls{});
}

TEST_CASE("a passed HA of 0 is 1 minute for both sources") {
  Reset();
  SetPassedHA(0);
  CHECK(fakes::power.values == std::map<std::string, uint32_t>{{"balanced AC hibernate", 60},
                                                               {"balanced DC hibernate", 60}});
  CHECK(Reports() == Calls{});
}

TEST_CASE("a passed HA of 1 minute is 60 seconds, the longest one wraps") {
  Reset();
  SetPassedHA(1);
  CHECK(fakes::power.values["balanced AC hibernate"] == 60);
  SetPassedHA(INT32_MAX);
  CHECK(fakes::power.values["balanced DC hibernate"] == 4294967236);
}

TEST_CASE("a negative passed HA changes nothing and reports nothing") {
  for (const int32_t minutes : {-1, -60, INT32_MIN}) {
    Reset();
    SetPassedHA(minutes);
    CHECK(fakes::power.calls == Calls{});
    CHECK(fakes::eventLog.calls == Calls{});
  }
}

TEST_CASE("a passed HA that cannot be set is reported for its source, and the other is set") {
  struct Row {
    int failing;
    Calls calls;
    Calls reports;
  };
  const Row rows[] = {
      {1,
       {"get active", "get active", "write balanced DC hibernate 120", "activate balanced"},
       {kPassedAC}},
      {2,
       {"get active", "write balanced AC hibernate 120", "get active",
        "write balanced DC hibernate 120", "activate balanced"},
       {kPassedAC}},
      {3,
       {"get active", "write balanced AC hibernate 120", "activate balanced", "get active",
        "write balanced DC hibernate 120", "activate balanced"},
       {}},
      {4,
       {"get active", "write balanced AC hibernate 120", "activate balanced", "get active"},
       {kPassedDC}},
      {5,
       {"get active", "write balanced AC hibernate 120", "activate balanced", "get active",
        "write balanced DC hibernate 120"},
       {kPassedDC}},
      {6,
       {"get active", "write balanced AC hibernate 120", "activate balanced", "get active",
        "write balanced DC hibernate 120", "activate balanced"},
       {}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.failing);
    Reset();
    fakes::power.failer.firstFailing = row.failing;
    SetPassedHA(2);
    CHECK(fakes::power.calls == row.calls);
    CHECK(Reports() == row.reports);
  }
}

TEST_CASE("a passed HA is reported for both sources when there is no active scheme") {
  Reset();
  fakes::power.failer = {.firstFailing = 1, .failures = 2};
  SetPassedHA(2);
  CHECK(fakes::power.calls == Calls{"get active", "get active"});
  CHECK(Reports() == Calls{kPassedAC, kPassedDC});
}

TEST_CASE("the cached HA of each source is restored and no longer cached") {
  Reset();
  CacheHA(fakes::settings.current);
  RestoreCachedHA();
  CHECK(fakes::power.calls == Calls{"get active", "write balanced AC hibernate 1800",
                                    "activate balanced", "get active",
                                    "write balanced DC hibernate 900", "activate balanced"});
  CHECK(fakes::settings.calls == Calls{"ReadSetting HA_AC delete", "ReadSetting HA_DC delete"});
  CHECK(fakes::settings.current.values.empty());
  CHECK(Reports() == Calls{});
}

TEST_CASE("a cached HA of 0 is restored as never") {
  Reset();
  fakes::settings.current.values[L"HA_AC"] = fakes::Number32(0);
  RestoreCachedHA();
  CHECK(fakes::power.calls ==
        Calls{"get active", "write balanced AC hibernate 0", "activate balanced"});
}

TEST_CASE("a source without a cached HA is left alone") {
  Reset();
  fakes::settings.current.values[L"HA_DC"] = fakes::Number32(15);
  RestoreCachedHA();
  CHECK(fakes::power.calls ==
        Calls{"get active", "write balanced DC hibernate 900", "activate balanced"});
  CHECK(Reports() == Calls{});
}

TEST_CASE("without a cached HA anywhere nothing is changed or reported") {
  Reset();
  RestoreCachedHA();
  CHECK(fakes::power.calls == Calls{});
  CHECK(fakes::eventLog.calls == Calls{});
}

TEST_CASE("a cached HA comes from the fallback keys, too, and stays there") {
  Reset();
  CacheHA(fakes::settings.defaults);
  fakes::settings.branding.values[L"HA_DC"] = fakes::Number32(3);
  for (int run = 0; run < 2; ++run) {
    fakes::power = {};
    RestoreCachedHA();
    CHECK(fakes::power.calls == Calls{"get active", "write balanced AC hibernate 1800",
                                      "activate balanced", "get active",
                                      "write balanced DC hibernate 180", "activate balanced"});
  }
}

TEST_CASE("a cached value that is no 32-bit number is deleted and the fallback taken") {
  Reset();
  fakes::settings.current.values[L"HA_AC"] = fakes::Number64(30);
  fakes::settings.defaults.values[L"HA_AC"] = fakes::Number32(4);
  RestoreCachedHA();
  CHECK(fakes::power.calls ==
        Calls{"get active", "write balanced AC hibernate 240", "activate balanced"});
  CHECK(fakes::settings.current.values.empty());
}

TEST_CASE("a cached HA that cannot be set is reported for its source and lost") {
  struct Row {
    int failing;
    Calls reports;
    size_t calls;
  };
  const Row rows[] = {
      {1, {kCachedAC}, 4}, {2, {kCachedAC}, 5}, {3, {}, 6},
      {4, {kCachedDC}, 4}, {5, {kCachedDC}, 5}, {6, {}, 6},
  };
  for (const Row& row : rows) {
    CAPTURE(row.failing);
    Reset();
    CacheHA(fakes::settings.current);
    fakes::power.failer.firstFailing = row.failing;
    RestoreCachedHA();
    CHECK(Reports() == row.reports);
    CHECK(fakes::power.calls.size() == row.calls);
    CHECK(fakes::settings.current.values.empty());
  }
}

TEST_CASE("a setting that cannot be read skips its source silently") {
  for (int failing = 1; failing <= 2; ++failing) {
    CAPTURE(failing);
    Reset();
    CacheHA(fakes::settings.current);
    fakes::settings.failer.firstFailing = failing;
    RestoreCachedHA();
    CHECK(fakes::power.calls ==
          (failing == 1
               ? Calls{"get active", "write balanced DC hibernate 900", "activate balanced"}
               : Calls{"get active", "write balanced AC hibernate 1800", "activate balanced"}));
    CHECK(fakes::eventLog.calls == Calls{});
  }
}

TEST_CASE("the HA of a source is read from the active scheme in minutes") {
  Reset();
  fakes::power.values = {{"balanced AC hibernate", 1859}, {"balanced DC hibernate", 0}};
  uint32_t minutes = 9;
  CHECK(ReadHA(kPowerSourceAC, minutes));
  CHECK(minutes == 30);
  CHECK(ReadHA(kPowerSourceDC, minutes));
  CHECK(minutes == 0);
  CHECK(fakes::power.calls == Calls{"get active", "read balanced AC hibernate", "get active",
                                    "read balanced DC hibernate"});
}

TEST_CASE("an HA that cannot be read leaves the minutes alone and is not reported") {
  for (int failing = 1; failing <= 2; ++failing) {
    CAPTURE(failing);
    Reset();
    fakes::power.values["balanced AC hibernate"] = 60;
    fakes::power.failer.firstFailing = failing;
    uint32_t minutes = 9;
    CHECK_FALSE(ReadHA(kPowerSourceAC, minutes));
    CHECK(minutes == 9);
    CHECK(fakes::power.failer.calls == failing);
    CHECK(fakes::eventLog.calls == Calls{});
  }
}

TEST_CASE("the current HA is that of DC on battery, and otherwise that of AC") {
  for (const uint8_t lineStatus : {kLineOffline, kLineOnline, kLineUnknown}) {
    Reset();
    fakes::power.values = {{"balanced AC hibernate", 1800}, {"balanced DC hibernate", 900}};
    fakes::power.acLineStatus = lineStatus;
    const bool onBattery = lineStatus == kLineOffline;
    CHECK(ReadCurrentHA() == std::optional<uint32_t>(onBattery ? 15 : 30));
    CHECK(fakes::power.calls ==
          Calls{"power source", "get active",
                onBattery ? "read balanced DC hibernate" : "read balanced AC hibernate"});
  }
}

TEST_CASE("without a power source, a scheme or its value there is no current HA") {
  for (int failing = 1; failing <= 3; ++failing) {
    CAPTURE(failing);
    Reset();
    fakes::power.values["balanced AC hibernate"] = 60;
    fakes::power.failer.firstFailing = failing;
    CHECK(ReadCurrentHA() == std::nullopt);
    CHECK(fakes::power.failer.calls == failing);
    CHECK(fakes::eventLog.calls == Calls{});
  }
}

}  // namespace dozewell
