#include "common/float_text.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"

namespace dozewell::replay {

void RunProbabilities(const Options& options, Results& results) {
  LearntData learnt(options, results);
  const int32_t slotCount = learnt.Shape().SlotCount();
  std::string& output = results.output;
  for (int slot = 0; slot < slotCount; ++slot) {
    const float probability = learnt.Predictor().GetSlotProbability(slot);
    if (options.json) {
      output += slot == 0 ? "[" : ",";
      output += FloatJson(probability);
    } else {
      output += std::to_string(slot) + " " + FloatText(probability) + "\n";
    }
  }
  if (options.json) output += "]\n";
}

}  // namespace dozewell::replay
