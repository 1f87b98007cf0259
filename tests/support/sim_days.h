#ifndef DOZEWELL_TESTS_SUPPORT_SIM_DAYS_H_
#define DOZEWELL_TESTS_SUPPORT_SIM_DAYS_H_

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "base/wall_clock.h"
#include "optimizer/simulator/sim_time_line.h"
#include "prediction/history_file.h"

namespace dozewell {

// Histories and time lines of tests count their days from Thursday 2026-01-01, with which a cycle
// of one day or seven begins.
constexpr int64_t kSimDays = 20454 * int64_t{86400};

inline int64_t SimTime(int64_t day, int64_t hour, int64_t minute = 0, int64_t second = 0) {
  return kSimDays + ((day * 24 + hour) * 60 + minute) * 60 + second;
}

inline tm SimLocalTime(int64_t day, int64_t hour, int64_t minute) {
  tm time;
  TmFromSeconds(SimTime(day, hour, minute), time);
  return time;
}

inline HistoryRecord SimRecord(uint32_t code, int64_t day, int64_t hour, int64_t minute = 0,
                               int64_t second = 0) {
  return {static_cast<double>(SimTime(day, hour, minute, second)), code, 0};
}

// An entry as "1 12:10 5": the day, the time and the state. Seconds are added when they are not 0.
inline std::string SimText(const SimEvent& event) {
  const int64_t seconds = event.time - kSimDays;
  char text[64];
  const int length =
      std::snprintf(text, sizeof(text), "%d %02d:%02d", static_cast<int>(seconds / 86400),
                    static_cast<int>(seconds / 3600 % 24), static_cast<int>(seconds / 60 % 60));
  std::string result(text, static_cast<size_t>(length));
  if (seconds % 60 != 0) result += ":" + std::to_string(seconds % 60);
  return result + " " + std::to_string(static_cast<int>(event.state));
}

inline std::vector<std::string> SimTexts(const SimTimeLine& timeLine) {
  std::vector<std::string> texts;
  for (const SimEvent& event : timeLine) texts.push_back(SimText(event));
  return texts;
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_SIM_DAYS_H_
