#include "common/sample_history.h"

#include <algorithm>
#include <iterator>
#include <random>

#include "base/wall_clock.h"
#include "prediction/slot_probability.h"

namespace dozewell {
namespace {

constexpr int64_t kMinute = 60;
constexpr int64_t kHour = 60 * kMinute;
constexpr int64_t kDay = kSecondsPerDay;
constexpr int64_t kFirstMonday = 1704067200;  // 2024-01-01 00:00
constexpr int kSaturday = 5;

}  // namespace

// A stretch of seconds since kFirstMonday.
struct UsedStretch {
  int64_t start;
  int64_t end;
};

// Draws random numbers and collects when the machine is in use. The distributions of the standard
// library differ between systems; its engine does not.
class Sampler {
 public:
  explicit Sampler(uint64_t seed) : engine_(seed) {}

  // Evenly distributed, both ends included.
  int64_t Between(int64_t low, int64_t high) {
    return low + static_cast<int64_t>(engine_() % static_cast<uint64_t>(high - low + 1));
  }

  // Mostly near the middle, never more than three times `third` away from it.
  int64_t Around(int64_t middle, int64_t third) {
    int64_t value = middle;
    for (int i = 0; i < 3; ++i) value += Between(-third, third);
    return value;
  }

  bool Chance(int percent) { return Between(1, 100) <= percent; }

  // A stretch that begins around a time and lasts between two lengths.
  UsedStretch Draw(int64_t middle, int64_t third, int64_t shortest, int64_t longest) {
    const int64_t start = Around(middle, third);
    return {start, start + Between(shortest, longest)};
  }

  // Adds a stretch of use, which must not begin earlier than the last one. If they meet, the last
  // one grows.
  void Use(const UsedStretch& stretch) {
    if (stretch.end <= stretch.start) return;
    if (!used_.empty() && stretch.start <= used_.back().end) {
      used_.back().end = std::max(used_.back().end, stretch.end);
    } else {
      used_.push_back(stretch);
    }
  }

  // The same, but not during the breaks, which are in order.
  void Use(const UsedStretch& stretch, const std::vector<UsedStretch>& breaks) {
    int64_t start = stretch.start;
    for (const UsedStretch& pause : breaks) {
      Use({start, std::min(pause.start, stretch.end)});
      start = std::max(start, pause.end);
    }
    Use({start, stretch.end});
  }

  const std::vector<UsedStretch>& Used() const { return used_; }

 private:
  std::mt19937_64 engine_;
  std::vector<UsedStretch> used_;
};

namespace {

bool IsWeekend(int day) { return day % kDaysInWeek >= kSaturday; }

// Weekdays with lunch and meetings away from the desk; evenings and weekends off, nearly always.
void OfficeDay(Sampler& sampler, int day) {
  const int64_t midnight = day * kDay;
  if (IsWeekend(day)) {
    if (sampler.Chance(4)) {
      sampler.Use(sampler.Draw(midnight + 11 * kHour, 50 * kMinute, 20 * kMinute, 2 * kHour));
    }
    return;
  }
  if (sampler.Chance(4)) return;
  const UsedStretch work = {sampler.Around(midnight + 8 * kHour + 30 * kMinute, 20 * kMinute),
                            sampler.Around(midnight + 17 * kHour + 20 * kMinute, 25 * kMinute)};
  std::vector<UsedStretch> breaks;
  if (sampler.Chance(45)) {
    breaks.push_back(sampler.Draw(midnight + 10 * kHour, 12 * kMinute, 20 * kMinute, 70 * kMinute));
  }
  breaks.push_back(
      sampler.Draw(midnight + 12 * kHour + 20 * kMinute, 8 * kMinute, 30 * kMinute, 65 * kMinute));
  if (sampler.Chance(55)) {
    breaks.push_back(sampler.Draw(midnight + 15 * kHour, 15 * kMinute, 20 * kMinute, 90 * kMinute));
  }
  sampler.Use(work, breaks);
}

// Evenings with dinner in between, some early mornings, and longer at weekends.
void HomeDay(Sampler& sampler, int day) {
  const int64_t midnight = day * kDay;
  if (IsWeekend(day)) {
    if (sampler.Chance(70)) {
      sampler.Use(
          sampler.Draw(midnight + 9 * kHour + 45 * kMinute, 27 * kMinute, 40 * kMinute, 3 * kHour));
    }
    if (sampler.Chance(65)) {
      sampler.Use(sampler.Draw(midnight + 15 * kHour, 33 * kMinute, 45 * kMinute, 3 * kHour));
    }
    if (sampler.Chance(88)) {
      sampler.Use({sampler.Around(midnight + 19 * kHour + 40 * kMinute, 20 * kMinute),
                   sampler.Around(midnight + kDay, 25 * kMinute)});
    }
    return;
  }
  if (sampler.Chance(35)) {
    sampler.Use(sampler.Draw(midnight + 7 * kHour, 9 * kMinute, 8 * kMinute, 35 * kMinute));
  }
  if (sampler.Chance(88)) {
    const UsedStretch evening = {
        sampler.Around(midnight + 18 * kHour + 30 * kMinute, 22 * kMinute),
        sampler.Around(midnight + 22 * kHour + 40 * kMinute, 23 * kMinute)};
    const UsedStretch dinner =
        sampler.Draw(midnight + 19 * kHour + 50 * kMinute, 10 * kMinute, 20 * kMinute, kHour);
    sampler.Use(evening, {dinner});
  }
}

// Weeks of early, late and night shifts by turns, with some Saturdays.
void ShiftDay(Sampler& sampler, int day) {
  constexpr int64_t kShiftStarts[] = {6 * kHour, 14 * kHour, 22 * kHour};
  constexpr int64_t kShiftLength = 8 * kHour;
  if (IsWeekend(day) && !sampler.Chance(day % kDaysInWeek == kSaturday ? 30 : 5)) return;
  if (sampler.Chance(3)) return;
  const int64_t planned =
      day * kDay + kShiftStarts[static_cast<size_t>(day / kDaysInWeek) % std::size(kShiftStarts)];
  const UsedStretch shift = {sampler.Around(planned, 5 * kMinute),
                             sampler.Around(planned + kShiftLength, 8 * kMinute)};
  std::vector<UsedStretch> breaks;
  if (sampler.Chance(60)) {
    breaks.push_back(sampler.Draw(planned + 2 * kHour, 10 * kMinute, 10 * kMinute, 25 * kMinute));
  }
  breaks.push_back(sampler.Draw(planned + 4 * kHour, 8 * kMinute, 25 * kMinute, 50 * kMinute));
  if (sampler.Chance(40)) {
    breaks.push_back(sampler.Draw(planned + 6 * kHour, 15 * kMinute, 10 * kMinute, 40 * kMinute));
  }
  sampler.Use(shift, breaks);
}

// No habits at all: moments, hours and whole nights at any time.
void ErraticDay(Sampler& sampler, int day) {
  int64_t time = day * kDay + sampler.Between(0, 12 * kHour);
  for (int64_t sessions = sampler.Between(0, 5); sessions > 0; --sessions) {
    const int64_t start = time + sampler.Between(kMinute, 6 * kHour);
    if (sampler.Chance(20)) {
      time = start + sampler.Between(1, 5 * kMinute);
    } else if (sampler.Chance(10)) {
      time = start + sampler.Between(6 * kHour, 30 * kHour);
    } else {
      time = start + sampler.Between(5 * kMinute, 4 * kHour);
    }
    sampler.Use({start, time});
  }
}

}  // namespace

struct SampleKind {
  const char* name;
  // Draws one day, counted from the first Monday.
  void (*drawDay)(Sampler& sampler, int day);
};

namespace {

constexpr SampleKind kKinds[] = {
    {"office", OfficeDay}, {"home", HomeDay}, {"shift", ShiftDay}, {"erratic", ErraticDay}};

}  // namespace

const SampleKind* FindSampleKind(std::string_view name) {
  const auto found = std::find_if(std::begin(kKinds), std::end(kKinds),
                                  [name](const SampleKind& kind) { return kind.name == name; });
  return found == std::end(kKinds) ? nullptr : found;
}

std::string SampleKindNames() {
  std::string names;
  for (const SampleKind& kind : kKinds) {
    if (!names.empty()) names += ", ";
    names += kind.name;
  }
  return names;
}

std::vector<HistoryRecord> MakeSampleHistory(const SampleKind& kind, int days, uint64_t seed) {
  Sampler sampler(seed);
  for (int day = 0; day < days; ++day) kind.drawDay(sampler, day);
  const int64_t length = days * kDay;
  std::vector<HistoryRecord> records;
  for (const UsedStretch& stretch : sampler.Used()) {
    if (stretch.start >= length) break;
    const int64_t end = std::min(stretch.end, length);
    records.push_back({static_cast<double>(kFirstMonday + stretch.start), 0, 0});
    records.push_back({static_cast<double>(kFirstMonday + end), 1, 0});
  }
  return records;
}

}  // namespace dozewell
