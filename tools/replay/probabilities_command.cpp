#include "common/float_text.h"
#include "common/json.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"

namespace dozewell::replay {

void RunProbabilities(const Options& options, Results& results) {
  LearntData learnt(options, results);
  const int32_t slotCount = learnt.Shape().SlotCount();
  Json list = Json::array();
  std::string text;
  for (int slot = 0; slot < slotCount; ++slot) {
    const float probability = learnt.Tracker().GetSlotProbability(slot);
    if (options.json) {
      list.push_back(JsonNumber(probability));
    } else {
      text += std::to_string(slot) + " " + FloatText(probability) + "\n";
    }
  }
  results.output = options.json ? IdentifiedLine(list, results.identity) : text;
}

}  // namespace dozewell::replay
