#ifndef DOZEWELL_OPTIMIZER_SIMULATOR_SIMULATOR_H_
#define DOZEWELL_OPTIMIZER_SIMULATOR_SIMULATOR_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "optimizer/simulator/native_simulator_configurations.h"
#include "optimizer/simulator/native_simulator_historian.h"
#include "optimizer/simulator/sim_time_line.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"

namespace dozewell {

// A shorter history gives no time line.
constexpr size_t kFewestSimulatedRecords = 3;

// Both replay a history and give the time line that the machine would have had. A record's code
// says what came: 0 activity, 1 sleep, 2 hibernation and 3 limbo, of which the service writes the
// first two. They throw FixedTextException for another code.

// With a fixed hibernate-after timeout, for which codes 1 to 3 are all sleep. Below one second
// stands for never.
SimTimeLine SimulateFixedTimeout(std::span<const HistoryRecord> history, int64_t timeoutSeconds);

// With a live predictor that learns from the history as it happens. Throws what the predictor
// throws too, for unusable parameters even when there is nothing to replay. A stop request cuts
// the time line short.
SimTimeLine SimulatePredictor(NativeSimulatorConfigurations& parameters,
                              std::span<const HistoryRecord> history);

// One run of SimulatePredictor.
class Simulator {
 public:
  // `parameters` are not owned and must outlive it.
  explicit Simulator(NativeSimulatorConfigurations& parameters);

  void Run(std::span<const HistoryRecord> history);

  const SimTimeLine& TimeLine() const { return timeLine_; }
  // What the predictor was told.
  const NativeSimulatorHistorian& Historian() const { return historian_; }

 private:
  // What became of an event: a handler that has dealt with it makes way for that of the new state.
  enum class Handled { Done, StateKept };
  using Handler = Handled (Simulator::*)();

  Handled SimInitial();
  Handled SimActive();
  Handled SimLimbo();
  Handled SimAsleep();
  Handled SimHibernating();
  static Handler HandlerOf(SimState state);

  void RecordEvent();
  void Append();
  void Predict();
  void ScheduleHibernation();
  void ScheduleWakeBack();
  // Places an event before the next one of the user, or not at all.
  void InsertScheduled(int64_t time, SimState state);
  void CancelScheduled();
  void CancelScheduledHibernations();

  NativeSimulatorHistorian historian_;
  CyclicProbabilityPredictor predictor_;
  std::vector<PredictionRecord> predictions_;
  SimEvent current_ = {};
  SimTimeLine queue_;  // what is still to come
  SimTimeLine timeLine_;
  // What is counted as queued. Neither count follows the queue exactly: see CancelScheduled.
  int pendingHibernations_ = 0;
  int pendingScheduled_ = 0;
  Handler handler_ = &Simulator::SimInitial;
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_SIMULATOR_SIMULATOR_H_
