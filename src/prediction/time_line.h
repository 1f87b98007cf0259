#ifndef DOZEWELL_PREDICTION_TIME_LINE_H_
#define DOZEWELL_PREDICTION_TIME_LINE_H_

#include <cstdint>

#include "base/wall_clock.h"

namespace dozewell {

// The states of a machine's time line. A plain enum, since data files may hold any other number,
// which counts as an inactive state of its own.
enum TimeLineState : int32_t {
  Activating = 0,        // in use from this moment
  Suspend = 1,           // asleep from this moment
  ShuttingDown = 2,      // off from this moment
  ContainerStopped = 4,  // the predictor is switched off
};

struct TimeLineEvent {
  tm time;  // local wall-clock time
  int32_t state;
};
static_assert(sizeof(TimeLineEvent) == 40);

// Stands for no prediction in PredictionRecord::minutes.
constexpr int32_t kNoPrediction = -1;

struct PredictionRecord {
  tm time;
  int32_t minutes;  // from `time` to the next idle stretch, or kNoPrediction
};
static_assert(sizeof(PredictionRecord) == 40);

// Receives each event at once, on the thread that posted it.
class ITimeLineListener {
 public:
  virtual void OnTimeLineEvent(const TimeLineEvent& event) = 0;

 protected:
  ~ITimeLineListener() = default;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_TIME_LINE_H_
