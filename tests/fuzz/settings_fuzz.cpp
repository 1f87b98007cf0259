// Reads a settings file of any content and has a tracker of its cycle learn and predict.

#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/cycle_shape.h"
#include "replay/file_configurations.h"
#include "replay/settings_file.h"

namespace dozewell {
namespace {

// A cycle of more slots takes longer and tests nothing more.
constexpr int32_t kMaxSlots = 20000;

void Run(std::string_view text) {
  std::vector<std::string> missing;
  replay::FileConfigurations configuration(replay::SettingsFile(text, "settings"), missing);
  if (ReadCycleShape(configuration).SlotCount() > kMaxSlots) return;
  ArbitraryCycleProbabilityTracker tracker(&configuration);
  for (int64_t seconds = 0; seconds < kLastSecond; seconds += 3000000017) {
    TimeLineEvent event;
    for (const int32_t state : {Activating, Suspend}) {
      TmFromSeconds(seconds + 40000 * state, event.time);
      event.state = state;
      tracker.ProcessEvent(event);
    }
    tracker.GetPredictions(event.time);
  }
  tracker.ReloadParameters("");
}

}  // namespace
}  // namespace dozewell

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  try {
    dozewell::Run({reinterpret_cast<const char*>(data), size});
  } catch (const std::exception&) {
    // Settings may be refused.
  }
  return 0;
}
