#include "event_log/zone_rules.h"

#include <doctest/doctest.h>

#include <string>

#include "common/local_time.h"

namespace dozewell {
namespace {

// Local time in a zone of a time in UTC.
std::string Local(const char* rules, const char* utc) {
  const auto zone = ZoneRules::Parse(rules);
  REQUIRE(zone);
  tm local;
  REQUIRE(TmFromSeconds(zone->WallSeconds(SecondsFromTm(*ParseLocalTime(utc))), local));
  return FormatLocalTime(local);
}

}  // namespace

TEST_CASE("a zone without daylight saving is ahead of or behind UTC") {
  CHECK(Local("UTC0", "2026-07-01T12:00:00") == "2026-07-01T12:00:00");
  CHECK(Local("JST-9", "2026-07-01T16:00:00") == "2026-07-02T01:00:00");
  CHECK(Local("MST7", "2026-07-01T06:59:59") == "2026-06-30T23:59:59");
  CHECK(Local("<+0330>-3:30", "2026-07-01T12:00:00") == "2026-07-01T15:30:00");
  CHECK(Local("LMT+0:01:15", "2026-07-01T12:00:00") == "2026-07-01T11:58:45");
}

TEST_CASE("clocks are changed in spring and in autumn") {
  constexpr const char* kBerlin = "CET-1CEST,M3.5.0,M10.5.0/3";
  CHECK(Local(kBerlin, "2026-03-29T00:59:59") == "2026-03-29T01:59:59");
  CHECK(Local(kBerlin, "2026-03-29T01:00:00") == "2026-03-29T03:00:00");
  CHECK(Local(kBerlin, "2026-10-25T00:59:59") == "2026-10-25T02:59:59");
  CHECK(Local(kBerlin, "2026-10-25T01:00:00") == "2026-10-25T02:00:00");
  constexpr const char* kEast = "EST5EDT,M3.2.0,M11.1.0";
  CHECK(Local(kEast, "2026-03-08T06:59:59") == "2026-03-08T01:59:59");
  CHECK(Local(kEast, "2026-03-08T07:00:00") == "2026-03-08T03:00:00");
  CHECK(Local(kEast, "2026-11-01T05:59:59") == "2026-11-01T01:59:59");
  CHECK(Local(kEast, "2026-11-01T06:00:00") == "2026-11-01T01:00:00");
}

TEST_CASE("daylight saving may last over the turn of the year, in local time") {
  constexpr const char* kSydney = "AEST-10AEDT,M10.1.0,M4.1.0/3";
  CHECK(Local(kSydney, "2026-12-31T12:59:59") == "2026-12-31T23:59:59");
  CHECK(Local(kSydney, "2026-12-31T13:00:00") == "2027-01-01T00:00:00");
  CHECK(Local(kSydney, "2026-04-04T15:59:59") == "2026-04-05T02:59:59");
  CHECK(Local(kSydney, "2026-04-04T16:00:00") == "2026-04-05T02:00:00");
  CHECK(Local(kSydney, "2026-10-03T16:00:00") == "2026-10-04T03:00:00");
}

TEST_CASE("daylight saving may differ by another amount and change at any hour") {
  CHECK(Local("<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", "2026-01-01T00:00:00") ==
        "2026-01-01T11:00:00");
  CHECK(Local("<-02>2<-01>,M3.5.0/-1,M10.5.0/0", "2026-03-29T00:59:59") == "2026-03-28T22:59:59");
  CHECK(Local("<-02>2<-01>,M3.5.0/-1,M10.5.0/0", "2026-03-29T01:00:00") == "2026-03-29T00:00:00");
}

TEST_CASE("rules of another form are refused") {
  for (const char* text : {"",
                           "CET",
                           "-1",
                           "CE-1",
                           "<CET-1",
                           "CET-25",
                           "CET-1:60",
                           "CET-1:",
                           "CET-1CEST",
                           "CET-1,M3.5.0",
                           "CET-1CEST,M3.5.0",
                           "CET-1CEST,M3.5.0,M10.5.0/",
                           "CET-1CEST,M3.5.0,M10.5.0/168",
                           "CET-1CEST,M13.5.0,M10.5.0",
                           "CET-1CEST,M0.5.0,M10.5.0",
                           "CET-1CEST,M3.6.0,M10.5.0",
                           "CET-1CEST,M3.0.0,M10.5.0",
                           "CET-1CEST,M3.5.7,M10.5.0",
                           "CET-1CEST,J60,J300",
                           "CET-1CEST,M3.5.0,M10.5.0x",
                           "Europe/Berlin",
                           "UTC0 "}) {
    CAPTURE(text);
    CHECK_FALSE(ZoneRules::Parse(text));
  }
}

}  // namespace dozewell
