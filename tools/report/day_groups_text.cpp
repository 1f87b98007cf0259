#include "report/day_groups_text.h"

#include "common/day_names.h"

namespace dozewell::report {
namespace {

// The days of a group from Monday on: "Sat, Sun".
std::string GroupText(const DayGroups& groups, int group) {
  std::string text;
  for (int i = 0; i < kDaysInWeek; ++i) {
    const int day = CycleDayFromMonday(i);
    if (groups.GroupOf(day) != group) continue;
    if (!text.empty()) text += ", ";
    text += CycleDayName(day);
  }
  return text;
}

}  // namespace

std::string DayGroupsText(const DayGroups* groups) {
  if (groups == nullptr) return "Each day counts alone.";
  const std::string first = GroupText(*groups, 0);
  const std::string second = GroupText(*groups, 1);
  if (first.empty() || second.empty()) return "All days count together.";
  return "Days that count together: " + first + "; and " + second + ".";
}

}  // namespace dozewell::report
