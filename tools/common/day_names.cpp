#include "common/day_names.h"

#include <iterator>
#include <span>

#include "base/utf8.h"
#include "base/wall_clock.h"

namespace dozewell {
namespace {

std::string NameIn(std::span<const wchar_t* const> names, int number) {
  if (number < 0 || number >= std::ssize(names)) return "???";
  return NarrowToUtf8(names[static_cast<size_t>(number)]);
}

}  // namespace

std::string DayName(int weekday) { return NameIn(kDayNames, weekday); }

std::string MonthName(int month) { return NameIn(kMonthNames, month); }

std::string CycleDayName(int day) {
  constexpr int kThursday = 4;
  return DayName((kThursday + day) % kDaysInWeek);
}

}  // namespace dozewell
