#ifndef DOZEWELL_EVENT_LOG_ZONE_RULES_H_
#define DOZEWELL_EVENT_LOG_ZONE_RULES_H_

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

namespace dozewell {

// A time zone by its rules, the same on every system.
class ZoneRules {
 public:
  // Rules in the form of the variable TZ of POSIX: "UTC0", "JST-9" or
  // "CET-1CEST,M3.5.0,M10.5.0/3", with changes on the n-th week day of a month. Nothing for any
  // other form.
  static std::optional<ZoneRules> Parse(std::string_view text);

  // Local time, as wall-clock seconds, of a time in seconds since 1970, UTC.
  int64_t WallSeconds(int64_t utcSeconds) const { return utcSeconds + Offset(utcSeconds); }

 private:
  // When a clock is changed each year.
  struct Change {
    std::chrono::month month;
    unsigned int week;  // 1 to 4; 5 is the last one
    std::chrono::weekday day;
    int64_t seconds;  // after midnight, by the clock that is changed

    // Wall-clock seconds.
    int64_t InYear(std::chrono::year year) const;
  };
  class Reader;

  int64_t Offset(int64_t utcSeconds) const;

  // Seconds that local time is ahead of UTC.
  int64_t standardOffset_ = 0;
  int64_t daylightOffset_ = 0;
  bool hasDaylight_ = false;
  Change toDaylight_ = {};
  Change toStandard_ = {};
};

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_ZONE_RULES_H_
