#ifndef DOZEWELL_PREDICTION_ARBITRARY_CYCLE_PROBABILITY_TRACKER_H_
#define DOZEWELL_PREDICTION_ARBITRARY_CYCLE_PROBABILITY_TRACKER_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "prediction/configurations.h"
#include "prediction/day_groups.h"
#include "prediction/probability_map.h"
#include "prediction/slot_learner.h"
#include "prediction/slot_pool.h"
#include "prediction/slot_probability.h"
#include "prediction/time_line.h"
#include "prediction/tracker.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// The minutes that a stretch of idle slots must last at least to be worth a hibernation.
constexpr int32_t kIdleStretchMinutes = 30;

// Learns how likely a machine is to be in use in each slot of a repeating cycle of days. Slot 0
// begins with the cycle that began at 1970-01-01 00:00. Not thread-safe.
//
// Keeps the probabilities of all slots and updates them with each event, so that a prediction only
// has to search. A tracker that is seldom asked can update them when it is asked.
class ArbitraryCycleProbabilityTracker : public ITracker {
 public:
  // A tracker that has learnt nothing. The configuration is not owned and must outlive it. Throws
  // FixedTextException when the configuration gives no usable cycle or no weights.
  explicit ArbitraryCycleProbabilityTracker(IConfigurations* configuration);

  // A tracker that starts with what another one has learnt. Throws as above, and for data of
  // another version or shape.
  ArbitraryCycleProbabilityTracker(IConfigurations* configuration, TrackerDataPtr data);

  // From now on probabilities are estimated when they are next asked for, and not with each event.
  void EstimateWhenAsked() { estimatesWhenAsked_ = true; }

  void ProcessEvent(const TimeLineEvent& event) override;
  const TrackerData* GetData() override { return &Data(); }
  void ReloadParameters(std::string section) override;
  std::vector<PredictionRecord> GetPredictions(const tm& time) override;
  std::vector<PredictionRecord> PredictHibernate(const tm& time) override;
  std::vector<PredictionRecord> PredictWake(const tm& time) override;
  // A slot outside the cycle gives kUnknownProbability.
  float GetSlotProbability(int slot) override;

  // The observations from which the probability of a slot of the cycle is estimated.
  Observations SlotObservations(int slot) const;
  // Thresholds: a slot is in use at or above the first, and idle below the second.
  float StrengthHigh() const { return strengthHigh_; }
  float StrengthLow() const { return strengthLow_; }
  // The groups of days whose observations count together. Null when each slot counts alone.
  const DayGroups* PooledDays() const { return pool_ ? &dayGroups_ : nullptr; }

 private:
  const TrackerData& Data() const { return learner_->Data(); }

  void ReloadWeights();
  void ReloadStrengths();
  float ReadStrength(const char* key);

  void StartProbabilities();
  void EstimateAllSlots();
  // Estimates what was learnt since probabilities were last asked for.
  void CatchUp();
  void EstimateSlots(int64_t first, int64_t last);
  void SetObservations(int slot, const Observations& observations);

  int32_t MinutesToIdle(int64_t seconds);
  std::optional<PredictionRecord> NextUse(int64_t seconds);

  IConfigurations* configuration_;
  std::optional<SlotLearner> learner_;
  ObservationWeights weights_;
  float strengthHigh_ = 0.0F;
  float strengthLow_ = 0.0F;
  int32_t idleRunLength_ = 0;
  DayGroups dayGroups_{0};
  bool estimatesWhenAsked_ = false;
  // Derived from all members above, unless it is behind. There is a pool when days are pooled.
  std::optional<SlotPool> pool_;
  ProbabilityMap probabilities_;
  bool isBehind_ = false;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_ARBITRARY_CYCLE_PROBABILITY_TRACKER_H_
