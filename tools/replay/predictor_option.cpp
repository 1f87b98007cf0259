#include "replay/predictor_option.h"

#include <string>

#include "common/option_text.h"
#include "common/tool_error.h"
#include "settings/setting_names.h"

namespace dozewell::replay {

bool IsOfRates(const Options& options) {
  const std::string name = options.predictor.value_or(kSlotsPredictor);
  if (name != kSlotsPredictor && name != kRatesPredictor) {
    throw ToolError(WrongValue("--predictor", "slots or rates", name));
  }
  if (options.noWake && name != kRatesPredictor) {
    throw ToolError("--no-wake goes with --predictor rates");
  }
  return name == kRatesPredictor;
}

}  // namespace dozewell::replay
