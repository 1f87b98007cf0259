#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/event_feed.h"
#include "ctl/event_text.h"
#include "ctl/live_identity.h"

namespace dozewell::ctl {

void RunWatch(const Options& options, const Console& console) {
  const uint32_t error = WatchEvents([&](const std::string& xml) {
    const ServiceEvent event = ParseEventXml(xml);
    console.print(options.json ? LiveLine(EventJson(event)) : EventLine(event));
  });
  if (error != 0) {
    throw CommandFailure(ExitCode::NotDone,
                         "the event log cannot be watched (error " + std::to_string(error) + ")");
  }
}

}  // namespace dozewell::ctl
