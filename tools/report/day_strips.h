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

// A figure of days down and hours across, in which stretches, in ascending order, are coloured by
// their kind: `days` days from the midnight `firstDay` on, within the calendar. For screen readers
// it has the hours of each kind for each day.
std::string DayStrips(std::string_view caption, std::span<const StretchKind> kinds,
                      std::span<const Stretch> stretches, int64_t firstDay, int days);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_DAY_STRIPS_H_
