#include <cstddef>
#include <optional>
#include <vector>

#include "common/cycle_cells.h"
#include "common/json.h"
#include "common/tool_error.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"
#include "replay/week_picture.h"

namespace dozewell::replay {
namespace {

Json CellsJson(const CycleCells& cells) {
  Json rows = Json::array();
  for (const CycleCells::Row& row : cells.rows) {
    Json list = Json::array();
    for (const auto& probability : row.cells)
      list.push_back(probability ? JsonNumber(static_cast<float>(*probability)) : Json());
    rows.push_back({{"name", row.name}, {"day", row.day}, {"cells", list}});
  }
  return {{"minutesPerCell", cells.cellMinutes}, {"rows", rows}};
}

}  // namespace

void RunWeek(const Options& options, Results& results) {
  LearntData learnt(options, results);
  const CycleShape shape = learnt.Shape();
  std::vector<float> probabilities(static_cast<size_t>(shape.SlotCount()));
  for (size_t slot = 0; slot < probabilities.size(); ++slot) {
    probabilities[slot] = learnt.Tracker().GetSlotProbability(static_cast<int>(slot));
  }
  const std::optional<CycleCells> cells = MakeCycleCells(shape, probabilities);
  if (!cells) throw ToolError("only a cycle of whole days of up to 100 hours has a picture");
  results.output = options.json ? IdentifiedLine(CellsJson(*cells), results.identity)
                                : DrawCycle(*cells, options.colour);
}

}  // namespace dozewell::replay
