#ifndef DOZEWELL_PREDICTION_HISTORIAN_H_
#define DOZEWELL_PREDICTION_HISTORIAN_H_

#include "prediction/time_line.h"

namespace dozewell {

// The live channel from the controller, which sees events, to the predictor, which learns from
// them.
class IHistorian {
 public:
  // Sets the one listener, which is not owned, in place of any earlier one.
  virtual void RegisterListener(ITimeLineListener* listener) = 0;
  virtual void UnregisterListener() = 0;

 protected:
  ~IHistorian() = default;
};

// The service's historian. Not thread-safe: the controller dispatches one event at a time.
class HistorianImpl : public IHistorian {
 public:
  void RegisterListener(ITimeLineListener* listener) override { listener_ = listener; }
  void UnregisterListener() override { listener_ = nullptr; }
  virtual ~HistorianImpl() = default;

  bool HasListener() const { return listener_ != nullptr; }

  // Hands an event to the listener, if there is one. Its exceptions go to the caller.
  void NotifyListener(const TimeLineEvent& event) {
    if (listener_ != nullptr) listener_->OnTimeLineEvent(event);
  }

 private:
  ITimeLineListener* listener_ = nullptr;
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_HISTORIAN_H_
