#ifndef DOZEWELL_BENCH_PLAIN_TRACKER_H_
#define DOZEWELL_BENCH_PLAIN_TRACKER_H_

#include <cstdint>
#include <vector>

#include "prediction/configurations.h"
#include "prediction/time_line.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// A plain reading of the tracker's rules: every probability is computed where it is needed, from
// the slot records, and every search goes slot by slot. Benchmarks compare the tracker's speed with
// it, and tests compare its answers to the last bit. For cycles whose seconds fit 32 bits.
class PlainTracker {
 public:
  explicit PlainTracker(IConfigurations& configuration);
  // Starts with what another tracker has learnt.
  PlainTracker(IConfigurations& configuration, const TrackerData& data);

  void ProcessEvent(const TimeLineEvent& event);
  const TrackerData* GetData() const { return data_.get(); }
  std::vector<PredictionRecord> GetPredictions(const tm& time) const;
  std::vector<PredictionRecord> PredictHibernate(const tm& time) const;
  std::vector<PredictionRecord> PredictWake(const tm& time) const;
  float GetSlotProbability(int slot) const;

 private:
  void ReadParameters(IConfigurations& configuration);
  void Update(SlotRecord& slot, int32_t observation);

  TrackerDataPtr data_;
  float weight1_;
  float weight2_;
  float weight3_;
  float strengthHigh_;
  float strengthLow_;
  int32_t dayGrouping_;
  int32_t flag_[7];
};

}  // namespace dozewell

#endif  // DOZEWELL_BENCH_PLAIN_TRACKER_H_
