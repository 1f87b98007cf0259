#ifndef DOZEWELL_PREDICTION_TRACKER_H_
#define DOZEWELL_PREDICTION_TRACKER_H_

#include <string>
#include <vector>

#include "prediction/time_line.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// The probability of a slot about which nothing is known.
constexpr float kUnknownProbability = -1.0F;

// Learns from a time line when a machine is in use and predicts from what it has learnt.
// Not thread-safe.
class ITracker {
 public:
  // Learns one change of state. Throws FixedTextException for an event that does not follow the one
  // before; the learnt data then stays as it was.
  virtual void ProcessEvent(const TimeLineEvent& event) = 0;
  // All learnt data, for reading; the tracker keeps ownership.
  virtual const TrackerData* GetData() = 0;
  // Reads thresholds and weights again and keeps the learnt data.
  virtual void ReloadParameters(std::string section) = 0;
  // One or two records: when to hibernate, counted from `time`, and, if known, when the machine is
  // expected to be in use after that, with the minutes from there to the next idle stretch.
  virtual std::vector<PredictionRecord> GetPredictions(const tm& time) = 0;
  // One record: `time` and the minutes until the next idle stretch of at least 30 minutes begins.
  virtual std::vector<PredictionRecord> PredictHibernate(const tm& time) = 0;
  // One record: the start of the next slot that counts as in use, with the minutes from there to
  // the next idle stretch. No record when no such slot is known.
  virtual std::vector<PredictionRecord> PredictWake(const tm& time) = 0;
  // The probability, 0 to 1, that the machine is in use in a slot, or kUnknownProbability.
  virtual float GetSlotProbability(int slot) = 0;
  virtual ~ITracker() = default;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_TRACKER_H_
