#include "replay/week_picture.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>

#include "common/format_text.h"

namespace dozewell::replay {
namespace {

constexpr size_t kCellsPerLabel = 6;

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
// Seen more often than one digit can say.
constexpr char kOften = '+';

// Null for what is not known.
const Shade* ShadeOf(const std::optional<double>& probability) {
  if (!probability) return nullptr;
  return &kShades[std::min(static_cast<int>(*probability * kShadeCount), kShadeCount - 1)];
}

std::string LikelyText(const CycleCells::Row& row, bool colour) {
  std::string text = "|";
  const Shade* current = nullptr;
  const auto setColours = [&](const Shade* shade) {
    if (!colour || shade == current) return;
    current = shade;
    text += shade == nullptr ? "\x1b[0m"
                             : "\x1b[48;5;" + std::to_string(shade->background) + ";38;5;" +
                                   std::to_string(shade->foreground) + "m";
  };
  for (const CycleCells::Cell& cell : row.cells) {
    const Shade* shade = ShadeOf(cell.likely);
    setColours(shade);
    text += shade == nullptr ? kUnknown : shade->character;
  }
  setColours(nullptr);
  return text + "|\n";
}

std::string SeenText(const CycleCells::Row& row) {
  std::string text = "|";
  for (const CycleCells::Cell& cell : row.cells) {
    text += !cell.likely ? kUnknown : cell.seen > 9 ? kOften : static_cast<char>('0' + cell.seen);
  }
  return text + "|\n";
}

std::string Ruler(const CycleCells& cells) {
  std::string ruler;
  for (size_t cell = 0; cell < cells.rows.front().cells.size(); cell += kCellsPerLabel) {
    const int minutes = static_cast<int>(cell) * cells.cellMinutes;
    ruler += FormatText("%02d:%02d ", minutes / 60, minutes % 60);
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

std::string DrawCycle(const CycleCells& cells, bool colour) {
  const size_t nameWidth = cells.rows.back().name.size();
  const std::string indent(nameWidth + 1, ' ');
  std::string likely;
  std::string seen;
  for (const CycleCells::Row& row : cells.rows) {
    std::string name = row.name;
    name.resize(nameWidth + 1, ' ');
    likely += name + LikelyText(row, colour);
    seen += name + SeenText(row);
  }
  // Each label starts over the cell of its minute, which comes after the frame.
  const std::string ruler = indent + " " + Ruler(cells);
  return ruler + likely + indent + Legend() + "\n" + ruler + seen + indent +
         "how sure that is: seen 1 to 9 times, " + kOften + " more often, " + kUnknown +
         " not known\n";
}

}  // namespace dozewell::replay
