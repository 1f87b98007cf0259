#include "common/duration_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "common/format_text.h"
#include "common/text.h"

namespace dozewell {
namespace {

constexpr std::string_view kNever = "never";

constexpr int64_t kMinutesInHour = 60;
constexpr int64_t kMinutesInDay = 24 * kMinutesInHour;

// More than any duration that is needed, and so little that sums fit in 64 bits.
constexpr int64_t kMostOfAUnit = int64_t{1} << 32;

struct Unit {
  std::string_view name;
  int64_t minutes;
};
constexpr Unit kUnits[] = {{"d", kMinutesInDay}, {"h", kMinutesInHour}, {"min", 1}, {"m", 1}};

// Removes the leading characters that `belongs` accepts from `text`, and returns them.
template <typename Belongs>
std::string_view Take(std::string_view& text, Belongs belongs) {
  const auto end = std::find_if_not(text.begin(), text.end(), belongs);
  const std::string_view taken = text.substr(0, static_cast<size_t>(end - text.begin()));
  text.remove_prefix(taken.size());
  return taken;
}

}  // namespace

std::optional<int64_t> ParseDuration(std::string_view text) {
  if (const auto minutes = ParseNumber<int64_t>(text)) {
    return *minutes >= 0 && *minutes <= kMostOfAUnit ? minutes : std::nullopt;
  }
  if (text.empty()) return std::nullopt;
  int64_t minutes = 0;
  int64_t longest = kMinutesInDay + 1;
  for (std::string_view rest = text; !rest.empty(); rest = TrimBlanks(rest)) {
    const auto number = ParseNumber<int64_t>(Take(rest, IsDigit));
    rest = TrimBlanks(rest);
    const std::string_view name = Take(rest, [](char c) { return !IsDigit(c) && c != ' '; });
    const Unit* const unit = std::ranges::find(kUnits, name, &Unit::name);
    if (!number || *number > kMostOfAUnit || unit == std::end(kUnits) || unit->minutes >= longest) {
      return std::nullopt;
    }
    minutes += *number * unit->minutes;
    longest = unit->minutes;
  }
  return minutes;
}

std::optional<int64_t> ParseTimeout(std::string_view text) {
  return text == kNever ? 0 : ParseDuration(text);
}

std::string TimeoutRange(int64_t most) {
  return std::string(kNever) + " or 1 to " + std::to_string(most) +
         " minutes, such as 45m or 1h30m";
}

std::string DurationText(int64_t minutes) {
  if (minutes < kMinutesInHour) return std::to_string(minutes) + " min";
  const auto days = static_cast<long long>(minutes / kMinutesInDay);
  const auto hours = static_cast<int>(minutes / kMinutesInHour % 24);
  const auto rest = static_cast<int>(minutes % kMinutesInHour);
  return days > 0 ? FormatText("%lld d %02d h %02d min", days, hours, rest)
                  : FormatText("%d h %02d min", hours, rest);
}

}  // namespace dozewell
