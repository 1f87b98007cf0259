#ifndef DOZEWELL_REPLAY_WEEK_PICTURE_H_
#define DOZEWELL_REPLAY_WEEK_PICTURE_H_

#include <string>

#include "common/cycle_cells.h"

namespace dozewell::replay {

// Two pictures of a cycle for a terminal of 80 columns, with a character for each cell: darker the
// likelier the machine is in use, and how often that was seen. Colours are an addition for
// terminals that show them.
std::string DrawCycle(const CycleCells& cells, bool colour);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_WEEK_PICTURE_H_
