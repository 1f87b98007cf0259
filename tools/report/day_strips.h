#ifndef DOZEWELL_REPORT_DAY_STRIPS_H_
#define DOZEWELL_REPORT_DAY_STRIPS_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace dozewell::report {

// What a stretch of time can be.
struct StretchKind {
  const char* cssClass;
  const char* name;
};

// From `start` to before `end`, in wall-clock seconds.
struct Stretch {
  int64_t start;
  int64_t end;
  size_t kind;  // among the kinds of the figure

  bool operator==(const Stretch&) const = default;
};

// Days and what was done on them.
struct Days {
  std::span<const StretchKind> kinds;  // the last one is that of the time between the stretches
  std::span<const Stretch> stretches;  // in ascending order
  int64_t first;                       // a midnight
  int count;                           // of days, all within the calendar
};

// A figure of days down and hours across, in which stretches are coloured by their kind, with its
// legend. For screen readers it has the hours of each kind for each day.
std::string DayStrips(std::string_view caption, const Days& days);

// The same in words: a table of the times of each day's stretches.
std::string DayTimes(std::string_view caption, const Days& days);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_DAY_STRIPS_H_
