#include "ctl/power_names.h"

#include <doctest/doctest.h>

namespace dozewell::ctl {

TEST_CASE("sources and schemes have names") {
  CHECK(NumberOf(kSources, "ac") == 0);
  CHECK(NumberOf(kSources, "dc") == 1);
  CHECK(NumberOf(kSources, "AC") == std::nullopt);
  CHECK(NumberOf(kSources, "0") == std::nullopt);
  CHECK(NumberOf(kSchemes, "high-performance") == 2);
  CHECK(NameOf(kSchemes, 1) == "power-saver");
  CHECK(NameOf(kSchemes, 3) == "3");
  CHECK(ListOf(kSources) == "ac or dc");
  CHECK(ListOf(kSchemes) == "balanced, power-saver or high-performance");
}

TEST_CASE("settings are found by name, and each has its own bit and field") {
  CHECK(FindPowerSetting("display-off")->mask == 0x01);
  CHECK(FindPowerSetting("sleep-after")->mask == 0x02);
  CHECK(FindPowerSetting("hibernate-after")->mask == 0x04);
  CHECK(FindPowerSetting("wake-timers")->mask == 0x08);
  CHECK(FindPowerSetting("hybrid-sleep")->mask == 0x10);
  CHECK(FindPowerSetting("hibernate") == nullptr);
  PowerTimeouts timeouts = {};
  uint32_t number = 0;
  for (const PowerSetting& setting : kPowerSettings) timeouts.*setting.field = ++number;
  CHECK(timeouts == PowerTimeouts{1, 2, 3, 4, 5});
}

TEST_CASE("a timeout is a duration or never, up to what its seconds can hold") {
  const PowerSetting& setting = *FindPowerSetting("hibernate-after");
  CHECK(ParsePowerValue(setting, "never") == 0);
  CHECK(ParsePowerValue(setting, "0") == 0);
  CHECK(ParsePowerValue(setting, "1h30m") == 90);
  CHECK(ParsePowerValue(setting, "71582788") == 71582788);
  CHECK(ParsePowerValue(setting, "71582789") == std::nullopt);
  CHECK(ParsePowerValue(setting, "-1") == std::nullopt);
  CHECK(ParsePowerValue(setting, "on") == std::nullopt);
  CHECK(PowerValueRange(setting) == "never or 1 to 71582788 minutes, such as 45m or 1h30m");
  CHECK(PowerValueText(setting, 0) == "never");
  CHECK(PowerValueText(setting, 90) == "1 h 30 min");
}

TEST_CASE("a switch has words and the scheme's own numbers") {
  const PowerSetting& wakeTimers = *FindPowerSetting("wake-timers");
  CHECK(ParsePowerValue(wakeTimers, "off") == 0);
  CHECK(ParsePowerValue(wakeTimers, "on") == 1);
  CHECK(ParsePowerValue(wakeTimers, "important") == 2);
  CHECK(ParsePowerValue(wakeTimers, "2") == 2);
  CHECK(ParsePowerValue(wakeTimers, "3") == std::nullopt);
  CHECK(ParsePowerValue(wakeTimers, "never") == std::nullopt);
  CHECK(PowerValueRange(wakeTimers) == "off, on or important");
  CHECK(PowerValueText(wakeTimers, 2) == "important");
  CHECK(PowerValueText(wakeTimers, 3) == "3");
  const PowerSetting& hybridSleep = *FindPowerSetting("hybrid-sleep");
  CHECK(ParsePowerValue(hybridSleep, "1") == 1);
  CHECK(ParsePowerValue(hybridSleep, "2") == std::nullopt);
  CHECK(PowerValueRange(hybridSleep) == "off or on");
}

}  // namespace dozewell::ctl
