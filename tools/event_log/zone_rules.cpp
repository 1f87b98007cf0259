#include "event_log/zone_rules.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>

#include "base/wall_clock.h"

namespace dozewell {
namespace {

namespace chrono = std::chrono;

constexpr int64_t kSecondsPerHour = 3600;
constexpr unsigned int kLastWeek = 5;

constexpr bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

// Takes the parts of the rules from the front, one by one. A missing part is empty.
class ZoneRules::Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  bool IsAtEnd() const { return rest_.empty(); }
  bool IsAt(char c) const { return rest_.starts_with(c); }

  bool Take(char c) {
    if (!IsAt(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  // "CET" or "<+03>".
  bool TakeName() {
    constexpr size_t kLeastLetters = 3;
    const bool isQuoted = Take('<');
    const auto isOfName = [isQuoted](char c) { return isQuoted ? c != '>' : IsLetter(c); };
    const auto* const end = std::ranges::find_if_not(rest_, isOfName);
    const auto length = static_cast<size_t>(end - rest_.begin());
    rest_.remove_prefix(length);
    return length >= kLeastLetters && (!isQuoted || Take('>'));
  }

  std::optional<unsigned int> TakeNumber(unsigned int low, unsigned int high) {
    unsigned int number = 0;
    const char* const begin = rest_.data();
    const auto [stop, error] = std::from_chars(begin, begin + rest_.size(), number);
    if (error != std::errc() || number < low || number > high) return std::nullopt;
    rest_.remove_prefix(static_cast<size_t>(stop - begin));
    return number;
  }

  // Seconds of "2", "-2" or "2:30:15".
  std::optional<int64_t> TakeTime(unsigned int mostHours) {
    const bool isNegative = Take('-');
    if (!isNegative) Take('+');
    const auto hours = TakeNumber(0, mostHours);
    if (!hours) return std::nullopt;
    int64_t seconds = *hours * kSecondsPerHour;
    for (const int64_t unit : {kSecondsPerMinute, int64_t{1}}) {
      if (!Take(':')) break;
      const auto number = TakeNumber(0, 59);
      if (!number) return std::nullopt;
      seconds += *number * unit;
    }
    return isNegative ? -seconds : seconds;
  }

  // Seconds ahead of UTC. The text says how far behind UTC the zone is.
  std::optional<int64_t> TakeOffset() {
    constexpr unsigned int kMostHours = 24;
    const auto behind = TakeTime(kMostHours);
    return behind ? std::optional(-*behind) : std::nullopt;
  }

  // ",M10.5.0/3"
  std::optional<Change> TakeChange() {
    constexpr int64_t kUsualSeconds = 2 * kSecondsPerHour;
    constexpr unsigned int kMostHours = 167;
    if (!Take(',') || !Take('M')) return std::nullopt;
    const auto month = TakeNumber(1, 12);
    if (!month || !Take('.')) return std::nullopt;
    const auto week = TakeNumber(1, kLastWeek);
    if (!week || !Take('.')) return std::nullopt;
    const auto day = TakeNumber(0, 6);
    if (!day) return std::nullopt;
    const auto seconds = Take('/') ? TakeTime(kMostHours) : kUsualSeconds;
    if (!seconds) return std::nullopt;
    return Change{chrono::month(*month), *week, chrono::weekday(*day), *seconds};
  }

 private:
  std::string_view rest_;
};

std::optional<ZoneRules> ZoneRules::Parse(std::string_view text) {
  Reader reader(text);
  ZoneRules rules;
  if (!reader.TakeName()) return std::nullopt;
  const auto standard = reader.TakeOffset();
  if (!standard) return std::nullopt;
  rules.standardOffset_ = *standard;
  if (reader.IsAtEnd()) return rules;

  if (!reader.TakeName()) return std::nullopt;
  const auto daylight = reader.IsAt(',') ? *standard + kSecondsPerHour : reader.TakeOffset();
  if (!daylight) return std::nullopt;
  const auto toDaylight = reader.TakeChange();
  if (!toDaylight) return std::nullopt;
  const auto toStandard = reader.TakeChange();
  if (!toStandard || !reader.IsAtEnd()) return std::nullopt;
  rules.hasDaylight_ = true;
  rules.daylightOffset_ = *daylight;
  rules.toDaylight_ = *toDaylight;
  rules.toStandard_ = *toStandard;
  return rules;
}

int64_t ZoneRules::Change::InYear(chrono::year year) const {
  const chrono::sys_days midnight = week == kLastWeek
                                        ? chrono::sys_days(year / month / day[chrono::last])
                                        : chrono::sys_days(year / month / day[week]);
  return chrono::duration_cast<chrono::seconds>(midnight.time_since_epoch()).count() + seconds;
}

int64_t ZoneRules::Offset(int64_t utcSeconds) const {
  if (!hasDaylight_) return standardOffset_;
  const chrono::sys_seconds standardTime{chrono::seconds(utcSeconds + standardOffset_)};
  const chrono::year_month_day date(chrono::floor<chrono::days>(standardTime));
  const int64_t toDaylight = toDaylight_.InYear(date.year()) - standardOffset_;
  const int64_t toStandard = toStandard_.InYear(date.year()) - daylightOffset_;
  // South of the equator, daylight saving lasts over the turn of the year.
  const bool isDaylight = toDaylight < toStandard
                              ? utcSeconds >= toDaylight && utcSeconds < toStandard
                              : utcSeconds >= toDaylight || utcSeconds < toStandard;
  return isDaylight ? daylightOffset_ : standardOffset_;
}

}  // namespace dozewell
