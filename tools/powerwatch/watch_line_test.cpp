#include "powerwatch/watch_line.h"

#include <doctest/doctest.h>

#include "common/powerwatch_format.h"
#include "import/powerwatch_file.h"
#include "service/service_host.h"

namespace dozewell::powerwatch {
namespace {

// 2026-11-21 08:05:09.250 in UTC, an hour later on the local clock.
constexpr int64_t kUtcMs = 1'795'248'309'250;
constexpr int64_t kHourMs = 3'600'000;

}  // namespace

TEST_CASE("a watched control is a line of what came and when") {
  CHECK(WatchLine({13, 4}, {kUtcMs + kHourMs, kUtcMs, 5000, 4000, 3000, 2000, 600}) ==
        "13,4,,2026-11-21T09:05:09.250,2026-11-21T08:05:09.250Z,5000,4000,3000,2000,600\r\n");
  CHECK(WatchLine({14, 5, "2"}, {kUtcMs, kUtcMs, 5000, {}, {}, {}, {}}) ==
        "14,5,2,2026-11-21T08:05:09.250,2026-11-21T08:05:09.250Z,5000,,,,\r\n");
  CHECK(
      WatchLine({13, 0x8013, GuidText(kIdleBackgroundTask)}, {kUtcMs, kUtcMs, 7, {}, 0, {}, {}}) ==
      "13,32787,{515C31D8-F734-163D-A0FD-11A08C91E8F1},2026-11-21T08:05:09.250,"
      "2026-11-21T08:05:09.250Z,7,,0,,\r\n");
}

TEST_CASE("a clock that cannot be read leaves its column empty") {
  CHECK(WatchLine({4}, {-1, -1, 7, {}, {}, {}, {}}) == "4,0,,,,7,,,,\r\n");
}

TEST_CASE("what the watch writes is what the import reads") {
  const PowerwatchLog log = ParsePowerwatch(
      std::string(kPowerwatchHeader) + "\r\n" +
          WatchLine({kWatchBegins}, {kUtcMs + kHourMs, kUtcMs, 1, 2, 3, 4, 5}) +
          WatchLine({13, 4}, {kUtcMs + 2 * kHourMs, kUtcMs + kHourMs, 6, {}, {}, {}, {}}),
      "w.csv");
  REQUIRE(log.events.size() == 2);
  CHECK(log.events[0].time == kUtcMs / 1000);
  CHECK(log.events[1].kind == LogEventKind::Slept);
  CHECK(log.clock(log.events[1].time) == (kUtcMs + 2 * kHourMs) / 1000);
}

}  // namespace dozewell::powerwatch
