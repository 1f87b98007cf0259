#include "replay/table_text.h"

#include <algorithm>

namespace dozewell::replay {
namespace {

constexpr size_t kNameWidth = 28;

std::string PaddedRight(std::string text, size_t width) {
  text.resize(std::max(text.size(), width), ' ');
  return text;
}

std::string PaddedLeft(const std::string& text, size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

}  // namespace

std::string AlignedLine(const std::string& name, std::span<const std::string> cells,
                        size_t cellWidth) {
  std::string line = PaddedRight(name, kNameWidth);
  for (const std::string& cell : cells) line += PaddedLeft(cell, cellWidth);
  return line + '\n';
}

}  // namespace dozewell::replay
