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
  // Learns one change of state. Throws FixedTextException for an event that does not follow its
  // predecessor; what was learnt then stays as it was.
  virtual void ProcessEvent(const TimeLineEvent& event) = 0;
  // All that was learnt, for reading; the tracker keeps ownership.
  virtual const TrackerData* GetData() = 0;
  // Reads thresholds and weights again; what was learnt is kept.
  virtual void ReloadParameters(std::string section) = 0;
  // When to hibernate, counted from `time`, and, when that is known, when the machine is expected
  // in use after it and how long after that the next idle stretch begins: one or two records.
  virtual std::vector<PredictionRecord> GetPredictions(const tm& time) = 0;
  // One record: `time` and the minutes until the next idle stretch of at least 30 minutes begins.
  virtual std::vector<PredictionRecord> PredictHibernate(const tm& time) = 0;
  // The start of the next slot that counts as in use, with the minutes from there to the next idle
  // stretch; no record when none is known.
  virtual std::vector<PredictionRecord> PredictWake(const tm& time) = 0;
  // The probability, 0 to 1, that the machine is in use in a slot, or kUnknownProbability.
  virtual float GetSlotProbability(int slot) = 0;
  virtual ~ITracker() = default;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_TRACKER_H_
