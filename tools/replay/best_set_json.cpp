#include "replay/best_set_json.h"

namespace dozewell::replay {

Json SetJson(const BestSetApplication& application) { return OptionalJson(application.parameters); }

}  // namespace dozewell::replay
