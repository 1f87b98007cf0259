#ifndef DOZEWELL_OPTIMIZER_SIMULATOR_SIMULATOR_H_
#define DOZEWELL_OPTIMIZER_SIMULATOR_SIMULATOR_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "optimizer/simulator/native_simulator_configurations.h"
#include "optimizer/simulator/native_simulator_historian.h"
#include "optimizer/simulator/sim_time_line.h"
#include "prediction/historian.h"
#include "prediction/history_file.h"
#include "prediction/predictor.h"

namespace dozewell {

// A shorter history gives no time line.
constexpr size_t kFewestSimulatedRecords = 3;

// The codes of records. The service writes the first two only.
enum HistoryCode : uint32_t { kUseCode = 0, kSleepCode = 1, kHibernationCode = 2, kLimboCode = 3 };
constexpr size_t kHistoryCodes = 4;

// What is thrown for any other code.
constexpr const char* kUnknownEvent = "Unknown event in the history";

// Both functions replay a history and return the time line that the machine would have had. Both
// throw FixedTextException for a record with an unknown code.

// With a fixed hibernate-after timeout. Codes 1 to 3 all count as sleep, and a timeout below one
// second never hibernates.
SimTimeLine SimulateFixedTimeout(std::span<const HistoryRecord> history, int64_t timeoutSeconds);

// With a live predictor that learns from the history as it is replayed. The predictor's exceptions
// go to the caller; unusable parameters throw even when the history is too short to be replayed. A
// stop request cuts the time line short.
SimTimeLine SimulatePredictor(NativeSimulatorConfigurations& parameters,
                              std::span<const HistoryRecord> history);

// Builds the predictor of a simulation, which learns from this historian.
using PredictorBuilder = std::function<std::unique_ptr<IPredictor>(IHistorian* historian)>;

// The same with any predictor.
SimTimeLine SimulatePredictor(const PredictorBuilder& build,
                              std::span<const HistoryRecord> history);

// One run of SimulatePredictor.
class Simulator {
 public:
  explicit Simulator(const PredictorBuilder& build);
  // `parameters` are not owned and must outlive the simulator.
  explicit Simulator(NativeSimulatorConfigurations& parameters);

  void Run(std::span<const HistoryRecord> history);

  const SimTimeLine& TimeLine() const { return timeLine_; }
  // Holds the events that the predictor received.
  const NativeSimulatorHistorian& Historian() const { return historian_; }

 private:
  // After Done the handler of the event's state comes next, after StateKept the same one again.
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
  // Queues an event, unless it lies behind the next recorded event other than a hibernation.
  void InsertScheduled(int64_t time, SimState state);
  void CancelScheduled();
  void CancelScheduledHibernations();

  NativeSimulatorHistorian historian_;
  std::unique_ptr<IPredictor> predictor_;
  std::vector<PredictionRecord> predictions_;
  SimEvent current_ = {};
  SimTimeLine queue_;  // the events still to come
  SimTimeLine timeLine_;
  // How many scheduled events are queued. Neither count is exact: see CancelScheduled.
  int pendingHibernations_ = 0;
  int pendingScheduled_ = 0;
  Handler handler_ = &Simulator::SimInitial;
};

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_SIMULATOR_SIMULATOR_H_
