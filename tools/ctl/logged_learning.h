#ifndef DOZEWELL_CTL_LOGGED_LEARNING_H_
#define DOZEWELL_CTL_LOGGED_LEARNING_H_

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "ctl/event_text.h"
#include "prediction/time_line.h"

namespace dozewell::ctl {

// What the controller that runs has learnt, as far as the service's own events tell.
struct LoggedLearning {
  std::vector<TimeLineEvent> events;  // oldest first, since the controller began or forgot all
  bool isWhole = false;               // the log has all of them
  std::optional<tm> begin;            // local time of the oldest event in the log

  // What was learnt after the last event that was saved, which is nothing when none was saved.
  // Nothing when the log does not go back that far.
  std::optional<std::vector<TimeLineEvent>> After(const std::optional<tm>& saved) const;
};

// Reads the service's events, oldest first. `startTime` is when the service last tried to start the
// controller, in seconds since 1970, UTC: what an earlier process had not saved by then is lost.
LoggedLearning ReadLearning(std::span<const ServiceEvent> events, int64_t startTime);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_LOGGED_LEARNING_H_
