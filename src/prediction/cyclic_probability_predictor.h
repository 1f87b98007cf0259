#ifndef DOZEWELL_PREDICTION_CYCLIC_PROBABILITY_PREDICTOR_H_
#define DOZEWELL_PREDICTION_CYCLIC_PROBABILITY_PREDICTOR_H_

#include <memory>
#include <string>
#include <vector>

#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/configurations.h"
#include "prediction/data_file.h"
#include "prediction/historian.h"
#include "prediction/predictor.h"

namespace dozewell {

// The name of the predictor's file in the data folder.
constexpr const wchar_t* kDataFileName = L"cpredict.z7";

// A tracker that outlives the process: it learns from the historian's events, follows changes of
// the configuration, and keeps its data in a file, which it reads when it is built and writes on
// ContainerStopped. Not thread-safe.
class CyclicProbabilityPredictor : public IPredictor,
                                   public ITimeLineListener,
                                   public IConfigurationsListener {
 public:
  // Registers with both, which are not owned and must outlive it. Throws FixedTextException for an
  // unusable configuration or a data file of another version, and
  // std::out_of_range("invalid string position") when there is no data folder.
  //
  // `known` is from the predictor that this one replaces (see LoadNewestData).
  CyclicProbabilityPredictor(IConfigurations* configuration, IHistorian* historian,
                             KnownData known = {});

  // The same with a data file of any name, which the constructor only reads.
  CyclicProbabilityPredictor(IConfigurations* configuration, IHistorian* historian,
                             std::wstring dataFilePath, KnownData known = {});

  ~CyclicProbabilityPredictor() override;
  CyclicProbabilityPredictor(const CyclicProbabilityPredictor&) = delete;
  CyclicProbabilityPredictor& operator=(const CyclicProbabilityPredictor&) = delete;

  std::vector<PredictionRecord> GetPredictions(const tm& time) override;
  std::vector<PredictionRecord> PredictHibernate(const tm& time) override;
  std::vector<PredictionRecord> PredictWake(const tm& time) override;
  float GetSlotProbability(int slot) override;

  // Learns the event, or on ContainerStopped saves. The tracker's exceptions go to the caller.
  void OnTimeLineEvent(const TimeLineEvent& event) override;
  void OnConfigurationChanged(std::string section) override;

  // For a predictor that learns beside the one that is asked (see the tracker).
  void EstimateWhenAsked() { tracker_->EstimateWhenAsked(); }

  // How reading the data file ended when the predictor was built.
  DataFileState LoadState() const { return loadState_; }

  // A copy of what was learnt, for the predictor that replaces this one.
  KnownData CopyOfKnown() const;

 private:
  void Save();

  IConfigurations* configuration_;
  IHistorian* historian_;
  std::unique_ptr<ArbitraryCycleProbabilityTracker> tracker_;
  std::wstring dataFilePath_;
  DataFileState loadState_ = DataFileState::NotOpened;
  bool isOfUnreadFile_ = false;  // until it is saved
  bool isSaved_ = true;          // unless the last save failed
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_CYCLIC_PROBABILITY_PREDICTOR_H_
