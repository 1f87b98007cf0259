#ifndef DOZEWELL_REPLAY_TABLE_TEXT_H_
#define DOZEWELL_REPLAY_TABLE_TEXT_H_

#include <cstddef>
#include <span>
#include <string>

namespace dozewell::replay {

// A line of a table: a name, and cells that end below one another.
std::string AlignedLine(const std::string& name, std::span<const std::string> cells,
                        size_t cellWidth);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_TABLE_TEXT_H_
