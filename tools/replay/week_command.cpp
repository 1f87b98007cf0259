#include <cstddef>
#include <vector>

#include "common/tool_error.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"
#include "replay/week_picture.h"

namespace dozewell::replay {

void RunWeek(const Options& options, Results& results) {
  LearntData learnt(options, results);
  const CycleShape shape = learnt.Shape();
  std::vector<float> probabilities(static_cast<size_t>(shape.SlotCount()));
  for (size_t slot = 0; slot < probabilities.size(); ++slot) {
    probabilities[slot] = learnt.Predictor().GetSlotProbability(static_cast<int>(slot));
  }
  results.output = DrawCycle(shape, probabilities, options.colour);
  if (results.output.empty())
    throw ToolError("only a cycle of whole days of up to 100 hours has a picture");
}

}  // namespace dozewell::replay
