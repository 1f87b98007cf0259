#include "optimizer/run_optimizer.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "base/durable_file.h"
#include "base/lock.h"
#include "base/thread.h"
#include "controller/state_machine/event_records.h"
#include "controller/state_machine/state_machine.h"
#include "diagnostics/event_writer.h"
#include "optimizer/parameter_ranges.h"
#include "optimizer/parameter_search.h"
#include "optimizer/simulator/simulator.h"
#include "optimizer/simulator/stop_request.h"
#include "power/hibernate_after.h"
#include "prediction/configurations_impl.h"
#include "prediction/history_file.h"
#include "settings/predictor_values.h"

namespace dozewell {
namespace {

using Clock = std::chrono::steady_clock;

// The fixed timeout to beat where the machine's own is not known.
constexpr uint32_t kDefaultTimeoutMinutes = 10;

std::vector<HistoryRecord> LoadHistory(const std::wstring& path) {
  FileContent file;
  {
    const std::lock_guard guard(EngineLock);
    file = ReadDurableFile(path);
  }
  return IncreasingRecords(file.bytes);
}

// No result after a stop request.
std::optional<std::vector<BestSet>> Search(const std::wstring& historyPath) {
  const std::vector<HistoryRecord> history = LoadHistory(historyPath);
  const int64_t timeoutSeconds = int64_t{ReadCurrentHA().value_or(kDefaultTimeoutMinutes)} * 60;
  if (OptimizerStopRequested) return std::nullopt;
  // Nobody waits for the result, so all other work of the machine goes first.
  const BackgroundPriority background;
  Outcomes baseline;
  CountOutcomes(SimulateFixedTimeout(history, timeoutSeconds), baseline);
  ConfigurationsImpl configuration;
  const ParameterGrid grid = BuildParameterGrid(ReadParameterRanges(configuration));
  return SearchParameters(history, baseline, grid, ParseIntList(kScoringWeightsName));
}

}  // namespace

void RunOptimizer(const std::wstring& historyPath) {
  const Clock::time_point start = Clock::now();
  if (const auto results = Search(historyPath)) {
    for (const BestSet& best : *results) {
      WritePredictorValue(kPredictorSection, best.name, best.value);
    }
    PostEvent(std::make_unique<ParamChangeEventData>(kStrengthName));
  }
  const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
  LogServiceEvent(L"Optimizer runtime %d\n", static_cast<uint32_t>(elapsed.count()),
                  kEventInformation);
  OptimizerStopRequested = false;
}

}  // namespace dozewell
