#include "replay/week_picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iterator>

#include "prediction/slot_probability.h"
#include "prediction/tracker.h"

namespace dozewell {
namespace {

constexpr int kMostCells = 48;
constexpr int kCellsPerLabel = 6;
constexpr int kMinutesInRealDay = 1440;
// What the ruler has room for.
constexpr int kMostMinutesInDay = 100 * 60;

// A cell's character, and its colours in the terminal's palette of 256.
struct Shade {
  char character;
  int background;
  int foreground;
};

// From never in use to always in use.
constexpr Shade kShades[] = {{' ', 17, 15},  {'.', 18, 15}, {':', 24, 15},  {'-', 30, 15},
                             {'=', 36, 16},  {'+', 71, 16}, {'*', 107, 16}, {'#', 143, 16},
                             {'%', 179, 16}, {'@', 220, 16}};
constexpr int kShadeCount = static_cast<int>(std::size(kShades));
constexpr char kUnknown = '?';

constexpr const char* kWeekDays[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
constexpr int kThursday = 3;  // the day that slot 0 begins

struct Picture {
  const CycleShape& shape;
  std::span<const float> probabilities;
  bool colour;

  // A week starts where people start it, other cycles where they start.
  bool IsWeek() const {
    return shape.daysInCycle == kDaysInWeek && shape.minutesInDay == kMinutesInRealDay;
  }
  std::string RowName(int row) const {
    return IsWeek() ? kWeekDays[row] : "day " + std::to_string(row);
  }
  int DayOfRow(int row) const {
    return IsWeek() ? (row + kDaysInWeek - kThursday) % kDaysInWeek : row;
  }

  int CellMinutes() const { return (shape.minutesInDay + kMostCells - 1) / kMostCells; }
  int CellCount() const { return (shape.minutesInDay + CellMinutes() - 1) / CellMinutes(); }

  // The shade of the mean of what is known about the minutes of a cell, or null.
  const Shade* CellShade(int day, int cell) const;
  std::string Row(int day) const;
  std::string Ruler() const;
};

const Shade* Picture::CellShade(int day, int cell) const {
  const int64_t firstSlot = int64_t{day} * shape.SlotsPerDay();
  const int first = cell * CellMinutes();
  const int end = std::min(first + CellMinutes(), shape.minutesInDay);
  double sum = 0;
  int known = 0;
  for (int minute = first; minute < end; ++minute) {
    const int64_t slot = firstSlot + minute / shape.minutesPerSlot;
    const float probability = probabilities[static_cast<size_t>(slot)];
    // Not-a-number, which weights without a sum give, tells nothing either.
    if (probability == kUnknownProbability || std::isnan(probability)) continue;
    sum += std::clamp(probability, 0.0F, 1.0F);
    ++known;
  }
  if (known == 0) return nullptr;
  return &kShades[std::min(static_cast<int>(sum / known * kShadeCount), kShadeCount - 1)];
}

std::string Picture::Row(int day) const {
  std::string row = "|";
  const Shade* current = nullptr;
  const auto setColours = [&](const Shade* shade) {
    if (!colour || shade == current) return;
    current = shade;
    row += shade == nullptr ? "\x1b[0m"
                            : "\x1b[48;5;" + std::to_string(shade->background) + ";38;5;" +
                                  std::to_string(shade->foreground) + "m";
  };
  for (int cell = 0; cell < CellCount(); ++cell) {
    const Shade* shade = CellShade(day, cell);
    setColours(shade);
    row += shade == nullptr ? kUnknown : shade->character;
  }
  setColours(nullptr);
  return row + "|\n";
}

std::string Picture::Ruler() const {
  std::string ruler;
  for (int cell = 0; cell < CellCount(); cell += kCellsPerLabel) {
    const int minutes = cell * CellMinutes();
    char label[32];
    std::snprintf(label, std::size(label), "%02d:%02d ", minutes / 60, minutes % 60);
    ruler += label;
  }
  ruler.back() = '\n';
  return ruler;
}

std::string Legend() {
  std::string ramp;
  for (const Shade& shade : kShades) ramp += shade.character;
  return "never in use |" + ramp + "| always in use, " + kUnknown + " not known\n";
}

}  // namespace

std::string DrawCycle(const CycleShape& shape, std::span<const float> probabilities, bool colour) {
  const bool wholeDays =
      shape.IsUsable() && shape.minutesInDay > 0 && shape.minutesInDay <= kMostMinutesInDay &&
      int64_t{shape.SlotsPerDay()} * shape.daysInCycle == std::ssize(probabilities);
  if (!wholeDays) return {};
  const Picture picture = {shape, probabilities, colour};
  const size_t nameWidth = picture.RowName(shape.daysInCycle - 1).size();
  const std::string indent(nameWidth + 1, ' ');
  // The ruler's labels start where their minute's cell does, behind the frame.
  std::string text = indent + " " + picture.Ruler();
  for (int row = 0; row < shape.daysInCycle; ++row) {
    std::string name = picture.RowName(row);
    name.resize(nameWidth + 1, ' ');
    text += name + picture.Row(picture.DayOfRow(row));
  }
  return text + indent + Legend();
}

}  // namespace dozewell
