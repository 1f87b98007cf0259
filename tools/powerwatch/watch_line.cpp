#include "powerwatch/watch_line.h"

#include "base/wall_clock.h"
#include "common/format_text.h"
#include "common/local_time.h"

namespace dozewell::powerwatch {
namespace {

constexpr int64_t kMsPerSecond = 1000;

// YYYY-MM-DDTHH:MM:SS.mmm; empty for a time that no calendar has.
std::string TimeText(int64_t milliseconds) {
  tm time;
  if (milliseconds < 0 || !TmFromSeconds(milliseconds / kMsPerSecond, time)) return "";
  return FormatLocalTime(time) + FormatText(".%03d", static_cast<int>(milliseconds % kMsPerSecond));
}

std::string UtcText(int64_t milliseconds) {
  const std::string text = TimeText(milliseconds);
  return text.empty() ? text : text + "Z";
}

std::string CounterText(const std::optional<uint64_t>& counter) {
  return counter ? std::to_string(*counter) : "";
}

}  // namespace

std::string GuidText(const std::array<uint8_t, 16>& guid) {
  return FormatText("{%02X%02X%02X%02X-%02X%02X-%02X%02X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                    guid[3], guid[2], guid[1], guid[0], guid[5], guid[4], guid[7], guid[6], guid[8],
                    guid[9], guid[10], guid[11], guid[12], guid[13], guid[14], guid[15]);
}

std::string WatchLine(const ReceivedControl& received, const Reading& reading) {
  std::string line;
  for (const std::string& column :
       {std::to_string(received.control), std::to_string(received.type), received.identifier,
        TimeText(reading.localMs), UtcText(reading.utcMs), std::to_string(reading.tickMs),
        CounterText(reading.awakeMs), CounterText(reading.lastSleepMs),
        CounterText(reading.lastWakeMs), CounterText(reading.idleLeftSeconds)}) {
    line += (line.empty() ? "" : ",") + column;
  }
  return line + "\r\n";
}

}  // namespace dozewell::powerwatch
