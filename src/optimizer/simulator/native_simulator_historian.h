#ifndef DOZEWELL_OPTIMIZER_SIMULATOR_NATIVE_SIMULATOR_HISTORIAN_H_
#define DOZEWELL_OPTIMIZER_SIMULATOR_NATIVE_SIMULATOR_HISTORIAN_H_

#include <vector>

#include "prediction/historian.h"

namespace dozewell {

// The historian of a simulation, which keeps its history in memory instead of a file.
class NativeSimulatorHistorian : public IHistorian {
 public:
  void RegisterListener(ITimeLineListener* listener) override { listener_ = listener; }
  void UnregisterListener() override { listener_ = nullptr; }
  virtual ~NativeSimulatorHistorian() = default;

  // Keeps an event and hands it to the listener, if there is one. The listener's exceptions go to
  // the caller.
  void Record(const TimeLineEvent& event) {
    entries_.push_back(event);
    if (listener_ != nullptr) listener_->OnTimeLineEvent(event);
  }

  const std::vector<TimeLineEvent>& Entries() const { return entries_; }

 private:
  ITimeLineListener* listener_ = nullptr;
  std::vector<TimeLineEvent> entries_;
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_SIMULATOR_NATIVE_SIMULATOR_HISTORIAN_H_
