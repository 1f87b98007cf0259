// Reads a file of dozewell-powerwatch of any content and checks that the times of its history
// increase and its states alternate.

#include <string>
#include <string_view>

#include "common/powerwatch_format.h"
#include "event_log/event_log_error.h"
#include "fuzz/input.h"
#include "import/powerwatch_file.h"

namespace dozewell {
namespace {

void Run(std::string_view text) {
  PowerwatchLog log = ParsePowerwatch(text, "watch");
  const EventLogHistory history = HistoryFromEvents(log.events, log.clock);
  const auto& records = history.records;
  for (size_t i = 1; i < records.size(); ++i) {
    fuzz::Require(records[i].time > records[i - 1].time);
    fuzz::Require(records[i].asleep == 1 - records[i - 1].asleep);
  }
}

}  // namespace
}  // namespace dozewell

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  // Most inputs would fail at the names of the columns, which are no secret.
  const std::string named = std::string(dozewell::kPowerwatchHeader) + "\n" + std::string(input);
  for (const std::string_view text : {input, std::string_view(named)}) {
    try {
      dozewell::Run(text);
    } catch (const dozewell::EventLogError&) {
      // A file may be refused.
    }
  }
  return 0;
}
