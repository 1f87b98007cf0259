#ifndef DOZEWELL_POWERWATCH_WATCH_LINE_H_
#define DOZEWELL_POWERWATCH_WATCH_LINE_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace dozewell::powerwatch {

// What the system says with a control.
struct ReceivedControl {
  uint32_t control;
  uint32_t type = 0;
  std::string identifier = {};  // a power setting's GUID or a session's number; empty for others
};

// What the machine's clocks and counters show at one moment. The counters of sleeps are counted
// from the start of the system, as the system gives them; what it does not give is empty.
struct Reading {
  int64_t localMs = 0;  // the local clock, and UTC, since 1970
  int64_t utcMs = 0;
  uint64_t tickMs = 0;                   // since the start of the system
  std::optional<uint64_t> awakeMs = {};  // the same without the time asleep
  std::optional<uint64_t> lastSleepMs = {};
  std::optional<uint64_t> lastWakeMs = {};
  std::optional<uint64_t> idleLeftSeconds = {};  // until the system is idle enough to sleep
};

// A power setting's identifier, as it lies in memory, in the form
// {515C31D8-F734-163D-A0FD-11A08C91E8F1}.
std::string GuidText(const std::array<uint8_t, 16>& guid);

// The line of a control in the watch's file, with its end.
std::string WatchLine(const ReceivedControl& received, const Reading& reading);

}  // namespace dozewell::powerwatch

#endif  // DOZEWELL_POWERWATCH_WATCH_LINE_H_
