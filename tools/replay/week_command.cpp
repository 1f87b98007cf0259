#include <optional>

#include "common/cycle_cells.h"
#include "common/json.h"
#include "common/slot_knowledge.h"
#include "common/tool_error.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"
#include "replay/week_picture.h"

namespace dozewell::replay {
namespace {

Json CellsJson(const CycleCells& cells) {
  Json rows = Json::array();
  for (const CycleCells::Row& row : cells.rows) {
    Json likely = Json::array();
    Json seen = Json::array();
    for (const CycleCells::Cell& cell : row.cells) {
      likely.push_back(cell.likely ? JsonNumber(static_cast<float>(*cell.likely)) : Json());
      seen.push_back(cell.seen);
    }
    rows.push_back({{"name", row.name}, {"day", row.day}, {"cells", likely}, {"seen", seen}});
  }
  return {{"minutesPerCell", cells.cellMinutes}, {"rows", rows}};
}

}  // namespace

void RunWeek(const Options& options, Results& results) {
  LearntData learnt(options, results);
  const std::optional<CycleCells> cells =
      MakeCycleCells(learnt.Shape(), KnowledgeOfSlots(learnt.Tracker()));
  if (!cells) throw ToolError("only a cycle of whole days of up to 100 hours has a picture");
  results.output = options.json ? IdentifiedLine(CellsJson(*cells), results.identity)
                                : DrawCycle(*cells, options.colour);
}

}  // namespace dozewell::replay
