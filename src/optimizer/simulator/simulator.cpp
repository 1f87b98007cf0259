#include "optimizer/simulator/simulator.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/exception.h"
#include "base/numbers.h"
#include "base/wall_clock.h"
#include "optimizer/simulator/stop_request.h"
#include "prediction/cyclic_probability_predictor.h"

namespace dozewell {
namespace {

// By the code of a record.
using StateTable = std::array<SimState, kHistoryCodes>;
constexpr StateTable kFixedTimeoutStates = {SimState::Active, SimState::Asleep, SimState::Asleep,
                                            SimState::Asleep};
constexpr StateTable kPredictorStates = {SimState::Active, SimState::Asleep, SimState::Hibernating,
                                         SimState::Limbo};

SimEvent ToSimEvent(const HistoryRecord& record, const StateTable& states) {
  if (record.asleep >= states.size()) throw FixedTextException(kUnknownEvent);
  return {TruncateToInt64(record.time), states[record.asleep]};
}

// The state that the predictor learns.
int32_t TimeLineStateOf(SimState state) {
  switch (state) {
    case SimState::Active:
      return Activating;
    case SimState::Limbo:
      return ShuttingDown;
    default:
      return Suspend;
  }
}

SimEvent TakeFront(SimTimeLine& queue) {
  const SimEvent front = queue.front();
  queue.pop_front();
  return front;
}

}  // namespace

SimTimeLine SimulateFixedTimeout(std::span<const HistoryRecord> history, int64_t timeoutSeconds) {
  if (history.size() < kFewestSimulatedRecords) return {};
  SimTimeLine queue;
  for (const HistoryRecord& record : history) {
    const SimEvent event = ToSimEvent(record, kFixedTimeoutStates);
    if (queue.empty() || event.state != queue.back().state) queue.push_back(event);
  }
  SimTimeLine timeLine;
  while (!queue.empty()) {
    const SimEvent event = TakeFront(queue);
    timeLine.push_back(event);
    if (event.state != SimState::Asleep || timeoutSeconds < 1 || queue.empty()) continue;
    const int64_t timeout = WrapAdd64(event.time, timeoutSeconds);
    if (queue.front().time > timeout) queue.push_front({timeout, SimState::Hibernating});
  }
  return timeLine;
}

SimTimeLine SimulatePredictor(NativeSimulatorConfigurations& parameters,
                              std::span<const HistoryRecord> history) {
  Simulator simulator(parameters);
  simulator.Run(history);
  return simulator.TimeLine();
}

SimTimeLine SimulatePredictor(const PredictorBuilder& build,
                              std::span<const HistoryRecord> history) {
  Simulator simulator(build);
  simulator.Run(history);
  return simulator.TimeLine();
}

Simulator::Simulator(const PredictorBuilder& build) : predictor_(build(&historian_)) {}

Simulator::Simulator(NativeSimulatorConfigurations& parameters)
    : predictor_(std::make_unique<CyclicProbabilityPredictor>(&parameters, &historian_)) {}

void Simulator::Run(std::span<const HistoryRecord> history) {
  if (history.size() < kFewestSimulatedRecords) return;
  for (const HistoryRecord& record : history) {
    queue_.push_back(ToSimEvent(record, kPredictorStates));
  }
  while (!queue_.empty()) {
    current_ = TakeFront(queue_);
    if (IsPredicted(current_.state)) --pendingScheduled_;
    if (current_.state == SimState::PredictedHibernation) --pendingHibernations_;
    if (OptimizerStopRequested) return;
    if ((this->*handler_)() == Handled::Done) handler_ = HandlerOf(current_.state);
  }
}

Simulator::Handler Simulator::HandlerOf(SimState state) {
  switch (state) {
    case SimState::Active:
      return &Simulator::SimActive;
    case SimState::Limbo:
      return &Simulator::SimLimbo;
    case SimState::Asleep:
    case SimState::PredictedWakeBack:
      return &Simulator::SimAsleep;
    case SimState::Hibernating:
    case SimState::PredictedHibernation:
      return &Simulator::SimHibernating;
  }
  return nullptr;
}

Simulator::Handled Simulator::SimInitial() {
  if (current_.state == SimState::Active) {
    RecordEvent();
    Append();
  }
  return Handled::Done;
}

Simulator::Handled Simulator::SimActive() {
  switch (current_.state) {
    case SimState::Active:
      break;
    case SimState::Limbo:
      RecordEvent();
      CancelScheduled();
      Append();
      break;
    case SimState::Asleep:
    case SimState::Hibernating:
      Predict();
      RecordEvent();
      CancelScheduled();
      ScheduleHibernation();
      Append();
      break;
    case SimState::PredictedHibernation:
    case SimState::PredictedWakeBack:
      CancelScheduled();
      break;
  }
  return Handled::Done;
}

Simulator::Handled Simulator::SimLimbo() {
  if (current_.state == SimState::Active || IsPredicted(current_.state)) {
    RecordEvent();
    CancelScheduled();
    Append();
  }
  return Handled::Done;
}

Simulator::Handled Simulator::SimAsleep() {
  switch (current_.state) {
    case SimState::Active:
    case SimState::Limbo:
      RecordEvent();
      CancelScheduled();
      Append();
      break;
    case SimState::Hibernating:
      // The predicted hibernation replaces the recorded one.
      if (pendingHibernations_ > 0 && std::ranges::find(queue_, SimState::PredictedHibernation,
                                                        &SimEvent::state) != queue_.end()) {
        return Handled::StateKept;
      }
      RecordEvent();
      ScheduleWakeBack();
      Append();
      break;
    case SimState::PredictedHibernation:
      RecordEvent();
      CancelScheduledHibernations();
      ScheduleWakeBack();
      Append();
      break;
    case SimState::Asleep:
    case SimState::PredictedWakeBack:
      break;
  }
  return Handled::Done;
}

Simulator::Handled Simulator::SimHibernating() {
  switch (current_.state) {
    case SimState::Active:
      RecordEvent();
      CancelScheduled();
      Append();
      break;
    case SimState::Limbo:
      RecordEvent();
      Append();
      break;
    case SimState::PredictedHibernation:
      CancelScheduledHibernations();
      break;
    case SimState::PredictedWakeBack:
      RecordEvent();
      CancelScheduled();
      ScheduleHibernation();
      Append();
      break;
    case SimState::Asleep:
    case SimState::Hibernating:
      break;
  }
  return Handled::Done;
}

void Simulator::RecordEvent() {
  TimeLineEvent event;
  TmFromSeconds(current_.time, event.time);
  event.state = TimeLineStateOf(current_.state);
  historian_.Record(event);
}

void Simulator::Append() { timeLine_.push_back(current_); }

void Simulator::Predict() {
  tm time;
  TmFromSeconds(current_.time, time);
  predictions_ = predictor_->GetPredictions(time);
}

void Simulator::ScheduleHibernation() {
  for (const PredictionRecord& prediction : predictions_) {
    const int64_t point =
        SecondsFromTm(prediction.time) + kSecondsPerMinute * int64_t{prediction.minutes};
    if (prediction.minutes > 0 && point > current_.time) {
      InsertScheduled(point, SimState::PredictedHibernation);
      return;
    }
  }
}

void Simulator::ScheduleWakeBack() {
  for (const PredictionRecord& prediction : predictions_) {
    const int64_t point = SecondsFromTm(prediction.time);
    if (point > current_.time) {
      InsertScheduled(point, SimState::PredictedWakeBack);
      return;
    }
  }
}

void Simulator::InsertScheduled(int64_t time, SimState state) {
  const auto next = std::ranges::find_if(queue_, [time](const SimEvent& event) {
    return event.time > time ||
           (event.state != SimState::Hibernating && event.state != SimState::PredictedHibernation);
  });
  if (next == queue_.end() || next->time <= time) return;
  queue_.insert(next, {time, state});
  ++pendingScheduled_;
  if (state == SimState::PredictedHibernation) ++pendingHibernations_;
}

// A cancelled wake-back lowers the count of hibernations, a cancelled hibernation does not. That is
// the rule, though no history shows it: scheduled events come before the user's next event, so none
// is left when that is handled.
void Simulator::CancelScheduled() {
  if (pendingScheduled_ <= 0) return;
  std::erase_if(queue_, [this](const SimEvent& event) {
    if (!IsPredicted(event.state)) return false;
    --pendingScheduled_;
    if (event.state == SimState::PredictedWakeBack) --pendingHibernations_;
    return true;
  });
}

void Simulator::CancelScheduledHibernations() {
  if (pendingHibernations_ <= 0) return;
  std::erase_if(queue_, [this](const SimEvent& event) {
    if (event.state != SimState::PredictedHibernation) return false;
    --pendingScheduled_;
    --pendingHibernations_;
    return true;
  });
}

}  // namespace dozewell
